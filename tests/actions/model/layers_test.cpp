// Layers and layer states, changed by lists: what the saved document holds, and what the log tells.
#include <functional>

#include "actions/action_fixture.h"
#include "creo/ProLayer.h"
#include "creo/ProMdl.h"
#include "creo/ProUtil.h"
#include "headless/store/document.h"
#include "headless/store/enum_texts.h"
#include "text/encoding.h"

namespace test {
namespace {

const char* const kLayers = R"({"format": 1,
  "parameters": [{"name": "KIND", "type": "string", "value": "OLD"}],
  "layers": [
    {"id": 1, "name": "01_DATUMS", "items": [{"type": "feature", "id": 5}]},
    {"id": 2, "name": "02_AXES", "items": [{"type": "feature", "id": 6}, {"type": "layer", "id": 1}]},
    {"id": 3, "name": "OLD_A", "status": "blank"},
    {"id": 4, "name": "OLD_B", "items": [{"type": "layer", "id": 3}]},
    {"id": 7, "name": "SELF", "items": [{"type": "layer", "id": 7}]}],
  "layerStates": [{"name": "WORK", "layers": [{"name": "01_DATUMS", "status": "hidden"}, {"name": "OLD_A"}]}],
  "activeLayerState": "WORK",
  "combinedStates": [{"id": 1, "name": "C1", "layerState": "WORK"}]})";

std::string word(creo::ProLayerDisplay status) {
  for (const auto& [name, value] : headless::EnumTexts<creo::ProLayerDisplay>::texts)
    if (value == status) return std::string(name);
  return "?";
}

// "A:5,L2 B=blank | WORK(A=hidden)*": layers with their items and status, then layer states, the active one with a
// star.
std::string described(const std::string& bytes) {
  headless::ModelRecord record;
  if (headless::readDocument(bytes, record)) return "unreadable";
  std::string all;
  for (const headless::LayerRecord& layer : record.layers) {
    all += (all.empty() ? "" : " ") + layer.name;
    if (layer.status != creo::ProLayerDisplay::normal) all += "=" + word(layer.status);
    const char* before = ":";
    for (const headless::ItemRecord& item : layer.items) {
      all += before + std::string(item.type == creo::ProItemType::layer ? "L" : "") + std::to_string(item.id);
      before = ",";
    }
  }
  all += " |";
  for (const headless::LayerStateRecord& state : record.layerStates) {
    all += " " + state.name + "(";
    for (const headless::LayerStatusRecord& layer : state.layers)
      all += (all.ends_with('(') ? "" : " ") + layer.name + "=" + word(layer.status);
    all += state.name == record.activeLayerState ? ")*" : ")";
  }
  return all;
}

struct Ran {
  std::wstring told;
  std::string saved;  // the layers of the saved document
};

// Runs a task on a part of its own world, then saves the part. arrange: what is to happen before the run.
Ran ranOn(const std::string& document, const std::string& task,
          const std::function<void(World&, creo::ProMdl)>& arrange = {}) {
  World world;
  writeBytes(world.models() + "/BRACKET.prt.1", document);
  world.list("list.xml", task + "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
  world.start();
  const creo::ProMdl bracket = world.open(L"BRACKET", creo::ProMdlType::part);
  if (arrange) arrange(world, bracket);
  world.run("list.xml");
  EXPECT_TRUE(world.session().unknownSteps().empty());
  std::wstring all = told(world.log());
  all.erase(all.find(L"|B1 "));
  return {all.substr(std::min(all.size(), all.find(L'|'))), described(world.document("BRACKET.prt"))};
}

std::string layerTask(const std::string& type, const std::string& attributes) {
  return "<task type='" + type + "' version='3' forPRT='true' forEF='false' " + attributes + "/>";
}

struct Case {
  std::string attributes;
  std::wstring told;
  std::string saved;
};
void expectCases(const std::string& type, const std::vector<Case>& cases, const char* document = kLayers) {
  for (const Case& entry : cases) {
    const Ran ran = ranOn(document, layerTask(type, entry.attributes));
    EXPECT_EQ(entry.told, ran.told) << entry.attributes;
    EXPECT_EQ(entry.saved, ran.saved) << entry.attributes;
  }
}

const std::string kUntouched =
    "01_DATUMS:5 02_AXES:6,L1 OLD_A=blank OLD_B:L3 SELF:L7 | WORK(01_DATUMS=hidden OLD_A=normal)*";

TEST(DeletedLayers, GoFromOtherLayersAndStatesToo) {
  expectCases(
      "deleteLayer",
      {{"name_0='OLD*' name_4='01*'", L"|Delete: OLD_A|Delete: OLD_B|Delete: 01_DATUMS", "02_AXES:6 SELF:L7 | WORK()*"},
       {"name_0='NONE' name_100='*'", L"", kUntouched},
       {"name_0='*'", L"|Delete: 01_DATUMS|Delete: 02_AXES|Delete: OLD_A|Delete: OLD_B|Delete: SELF", " | WORK()*"},
       {"name_0='02*' copyTo='OLD_?' ", L"|W:No layer fits 'OLD_?', so no items are copied|Delete: 02_AXES",
        "01_DATUMS:5 OLD_A=blank OLD_B:L3 SELF:L7 | WORK(01_DATUMS=hidden OLD_A=normal)*"},
       {"name_0='OLD*' copyTo='/(*LIMIT_MATCH=5)(?:.?){9}[#~]|OLD_A/'",
        L"|E:The pattern '/(*LIMIT_MATCH=5)(?:.?){9}[#~]|OLD_A/' was given up on the text '01_DATUMS': it takes too "
        L"many "
        L"steps|E:No layer is deleted, as a pattern was given up",
        kUntouched},
       // Each layer's items come to the two that stay, though the pattern fits those as well.
       {"name_0='*' copyTo='/SELF|OLD_A/'",
        L"|Copy Items to: OLD_A|Copy Items to: SELF|Delete: 01_DATUMS|Copy Items to: OLD_A|Copy Items to: SELF|Delete: "
        L"02_AXES|Copy Items to: OLD_A|Copy Items to: SELF|Delete: OLD_B",
        "OLD_A=blank:5,6 SELF:L7,5,6,L3 | WORK(OLD_A=normal)*"},
       {"delallempty='true'", L"|Delete all empty|Delete: OLD_A|Delete: OLD_B",
        "01_DATUMS:5 02_AXES:6,L1 SELF:L7 | WORK(01_DATUMS=hidden)*"}});
}

TEST(DeletedLayers, ThatBecomeEmptyGoAsIfTheWalkHadStartedAgain) {
  expectCases("deleteLayer",
              {{"delallempty='true'", L"|Delete all empty|Delete: E|Delete: C|Delete: A|Delete: B", "D:9,L6 |"}},
              R"({"format": 1, "layers": [
                {"id": 1, "name": "A", "items": [{"type": "layer", "id": 3}]},
                {"id": 2, "name": "B", "items": [{"type": "layer", "id": 1}, {"type": "layer", "id": 5}]},
                {"id": 5, "name": "E"},
                {"id": 3, "name": "C"},
                {"id": 4, "name": "D", "items": [{"type": "feature", "id": 9}, {"type": "layer", "id": 6}]}]})");
}

TEST(DeletedLayers, ThatCantGoStayWithTheirItems) {
  const std::string task = layerTask("deleteLayer", "name_0='0*' name_1='0*' copyTo='OLD_A'");
  const Ran notDeleted = ranOn(kLayers, layerTask("deleteLayer", "name_0='0*'"), [](World& world, creo::ProMdl) {
    world.session().failNext("ProLayerDelete", creo::ProGeneralError);
  });
  EXPECT_EQ(L"|Delete: 01_DATUMS|E:There occured an Error while delete a layer|Delete: 02_AXES", notDeleted.told);
  const Ran notCopied = ranOn(kLayers, task, [](World& world, creo::ProMdl) {
    world.session().failNext("ProLayerItemAdd", creo::ProGeneralError);
  });
  EXPECT_EQ(
      L"|Copy Items to: OLD_A|E:There occured an Error while copy the items of layer 01_DATUMS, it stays|Copy Items "
      L"to: OLD_A|Delete: 02_AXES",
      notCopied.told);
  const Ran unread = ranOn(kLayers, task, [](World& world, creo::ProMdl) {
    world.session().failNext("ProMdlLayerVisit", creo::ProGeneralError);
  });
  EXPECT_EQ(L"|E:The layers can't be visited|E:No layer is deleted, as not all layers can be read", unread.told);
  EXPECT_EQ(kUntouched, unread.saved);
  EXPECT_EQ("01_DATUMS:5 OLD_A=blank:6,L1 OLD_B:L3 SELF:L7 | WORK(01_DATUMS=hidden OLD_A=normal)*", notCopied.saved);
}

// A part with that many empty layers, all in one state.
std::string manyLayers(int count) {
  std::string layers, inState;
  for (int i = 1; i <= count; ++i) {
    const std::string name = R"("name": "L)" + std::to_string(i) + '"', before = i > 1 ? "," : "";
    layers += before + R"({"id": )" + std::to_string(i) + "," + name + "}";
    inState += before + "{" + name + "}";
  }
  return R"({"format": 1, "layers": [)" + layers + R"(], "layerStates": [{"name": "ALL", "layers": [)" + inState +
         "]}]}";
}

TEST(DeletedLayers, AreWalkedOnceHoweverManyThereAre) {
  const auto callsOver = [](int count) {
    World world;
    writeBytes(world.models() + "/BRACKET.prt.1", manyLayers(count));
    world.list("list.xml", layerTask("deleteLayer", "name_0='*' copyTo='NONE'") + layerTask("saveModel", ""));
    world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(" | ALL()", described(world.document("BRACKET.prt")));
    EXPECT_EQ(count, world.session().calls("ProLayerDelete"));
    return std::pair(world.session().calls("ProMdlLayerVisit"), world.session().calls("ProLayerNameGet") / count);
  };
  EXPECT_EQ(callsOver(30), callsOver(300));
}

// A walk that has started again a hundred thousand times ends, says so once, and the list goes on.
TEST(DeletedLayers, EndAtTheBoundOfRestarts) {
  constexpr int kMost = 100'000;
  World world;
  writeBytes(world.models() + "/BRACKET.prt.1", manyLayers(kMost + 2));
  world.list("list.xml", layerTask("deleteLayer", "name_0='*' name_1='L*'") + layerTask("saveModel", ""));
  world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(kMost, world.session().calls("ProLayerDelete"));
  EXPECT_EQ("L100001 L100002 | ALL(L100001=normal L100002=normal)", described(world.document("BRACKET.prt")));
  const std::wstring log = world.log(), line = L"The walk over the layers started again 100000 times; the rest is left";
  const std::size_t first = log.find(line);
  ASSERT_NE(log.npos, first);
  EXPECT_EQ(log.npos, log.find(line, first + 1));
}

TEST(DeletedLayers, HaveTheLayerDialogTakenAwayBefore) {
  for (const auto& [value, step] : {std::pair(L"YES", L"~ Close `layer_dlg_cur` `layer_dlg_cur`"),
                                    {L"no", L"~ Select `main_dlg_cur` `PHTLeft.PHLayerUI.AssyTree` 1 `node0`"}}) {
    World world;
    writeBytes(world.models() + "/BRACKET.prt.1", kLayers);
    world.list("list.xml", layerTask("deleteLayer", "name_0='NONE'"));
    world.start();
    world.open(L"BRACKET", creo::ProMdlType::part);
    creo::ProConfigoptSet(L"floating_layer_tree", value);
    world.run("list.xml");
    EXPECT_EQ(std::vector<std::wstring>{step}, world.session().ranSteps());
  }
}

TEST(RenamedLayers, TakeTheNameOrGoToTheLayerThatHasIt) {
  expectCases(
      "renameLayer",
      {{"namef_0='OLD_A' namet_0='NEW' namef_1='X'", L"|Layer renamed from: OLD_A to: NEW",
        "01_DATUMS:5 02_AXES:6,L1 NEW=blank OLD_B:L3 SELF:L7 | WORK(01_DATUMS=hidden NEW=normal)*"},
       {"namef_0='OLD_A' namet_0='self' namef_1='01*' namet_1='FIRST' namef_2='02*' namet_2='SECOND'",
        L"|W:OLD_A - Can't rename the layer, because another one with same name exists|Layer renamed from: 01_DATUMS "
        L"to: FIRST|Layer renamed from: 02_AXES to: SECOND",
        "FIRST:5 SECOND:6,L1 OLD_A=blank OLD_B:L3 SELF:L7 | WORK(FIRST=hidden OLD_A=normal)*"},
       {"namef_0='/^0|SELF/' namet_0='SELF' ifLayExists='true'",
        L"|Layer elements are copied from: 01_DATUMS to: SELF|Layer elements are copied from: 02_AXES to: SELF",
        "OLD_A=blank OLD_B:L3 SELF:L7,5,6 | WORK(OLD_A=normal)*"},
       {"namef_0='OLD_A' namet_0=''", L"|E:Can't rename the layer 'OLD_A' to ''", kUntouched}});
}

TEST(RenamedLayers, ThatTakeEachOthersNamesEndAtTheBound) {
  const Ran ran = ranOn(kLayers, layerTask("renameLayer", "namef_0='SELF' namet_0='B' namef_1='B' namet_1='SELF'"));
  std::size_t lines = 0;
  for (std::size_t at = 0; (at = ran.told.find(L"|Layer renamed", at)) != ran.told.npos; ++at) ++lines;
  EXPECT_EQ(100U, lines);
  EXPECT_TRUE(ran.told.ends_with(L"|W:The walk over the layers started again 100 times; the rest is left"));
  EXPECT_EQ(kUntouched, ran.saved);
}

TEST(RenamedLayers, ThatCantBeMergedStay) {
  const auto merged = [](const char* operation) {
    const std::string task = layerTask("renameLayer", "namef_0='01*' namet_0='OLD_B' ifLayExists='true'");
    return ranOn(kLayers, task,
                 [&](World& world, creo::ProMdl) { world.session().failNext(operation, creo::ProGeneralError); });
  };
  for (const char* operation : {"ProLayerItemAdd", "ProModelitemByNameInit", "ProLayerItemsGet"}) {
    const Ran ran = merged(operation);
    EXPECT_EQ(L"|E:There occured an Error while copy the items of layer 01_DATUMS, it stays", ran.told) << operation;
    EXPECT_EQ(kUntouched, ran.saved) << operation;
  }
  EXPECT_EQ(L"|E:There occured an Error while delete a layer", merged("ProLayerDelete").told);
}

TEST(LayerStatus, IsSavedWhenTheListSaysSo) {
  expectCases(
      "changeLayerStatus",
      {{"name_0='%KIND%*' value_0='display' name_1='SELF' value_1='blank' saveLS='true'",
        L"|OLD_A - Changed to new status|OLD_B - Changed to new status|SELF - Changed to new status|Save layer status",
        "01_DATUMS:5 02_AXES:6,L1 OLD_A=display OLD_B=display:L3 SELF=blank:L7 | WORK(01_DATUMS=hidden "
        "OLD_A=normal)*"},
       {"name_0='SELF' value_0='blank'", L"|SELF - Changed to new status", kUntouched},
       {"name_0='OLD_A' value_0='hidden' name_1='SELF' saveLS='true'",
        L"|OLD_A - Changed to new status|Save layer status|W:No layer have changed the status since last save",
        kUntouched}});
  const std::pair<const char*, std::wstring> failures[] = {
      {"ProLayerDisplaystatusSet",
       L"|E:SELF - Failure occured while change status|Save layer status|W:No layer have changed the status since last "
       L"save"},
      {"ProLayerDisplaystatusSave",
       L"|SELF - Changed to new status|Save layer status|E:A failure occured while save layer status"}};
  for (const auto& [operation, line] : failures) {
    const std::string task = layerTask("changeLayerStatus", "name_0='SELF' value_0='blank' saveLS='true'");
    EXPECT_EQ(line, ranOn(kLayers, task, [operation = operation](World& world, creo::ProMdl) {
                      world.session().failNext(operation, creo::ProGeneralError);
                    }).told);
  }
}

TEST(LayerStatus, ShowsUntilTheModelIsSavedWithoutIt) {
  World world;
  writeBytes(world.models() + "/BRACKET.prt.1", kLayers);
  world.list("list.xml", layerTask("changeLayerStatus", "name_0='SELF' value_0='blank'"));
  world.start();
  const creo::ProLayer self{world.open(L"BRACKET", creo::ProMdlType::part), 7};
  world.run("list.xml");
  EXPECT_EQ(creo::ProLayerDisplay::blank, creo::ProLayerDisplaystatusGet(self).value);
  EXPECT_EQ(creo::ProNoError, creo::ProMdlSave(self.owner));
  EXPECT_EQ(creo::ProLayerDisplay::normal, creo::ProLayerDisplaystatusGet(self).value);
  EXPECT_EQ(kUntouched, described(world.document("BRACKET.prt")));
}

// What a part shows is saved by a list that works on the assembly above it.
TEST(LayerStatus, IsSavedInTheModelsBelowToo) {
  World world;
  writeBytes(world.models() + "/BRACKET.prt.1", kLayers);
  writeBytes(world.models() + "/TOP.asm.1", R"({"format": 1, "layers": [{"id": 1, "name": "A"}],
      "components": [{"name": "SUB", "type": "asm", "feature": 1}]})");
  writeBytes(world.models() + "/SUB.asm.1",
             R"({"format": 1, "components": [{"name": "BRACKET", "type": "prt", "feature": 1}]})");
  const std::string save = "<task type='changeLayerStatus' version='3' forASM='true' forEF='false' saveLS='true'/>";
  world.list("list.xml", save + save);
  world.start();
  world.open(L"TOP", creo::ProMdlType::assembly);
  const creo::ProMdl part = creo::ProMdlInit(L"BRACKET", creo::ProMdlType::part).value;
  EXPECT_EQ(creo::ProNoError, creo::ProLayerDisplaystatusSet({part, 7}, creo::ProLayerDisplay::blank));
  world.run("list.xml");
  EXPECT_NE(std::wstring::npos,
            told(world.log())
                .find(L"B0 Change layer status|Save layer status|B1 Change layer status|Save layer status|"
                      L"W:No layer have changed the status since last save"));
  EXPECT_EQ(creo::ProNoError, creo::ProMdlSave(part));
  EXPECT_EQ("01_DATUMS:5 02_AXES:6,L1 OLD_A=blank OLD_B:L3 SELF=blank:L7 | WORK(01_DATUMS=hidden OLD_A=normal)*",
            described(world.document("BRACKET.prt")));
}

TEST(LayerItems, AreThingsOfTheModelOfKindsThatLayersTake) {
  ranOn(kLayers, layerTask("changeLayerStatus", "name_0='NONE' value_0='blank'"), [](World&, creo::ProMdl part) {
    using creo::ProItemType;
    const creo::ProLayer self{part, 7};
    EXPECT_EQ(creo::ProNotFound, creo::ProLayerItemInit(ProItemType::layer, 5, part).error);
    EXPECT_EQ(creo::ProNotFound, creo::ProLayerItemInit(ProItemType::feature, 99, part).error);
    EXPECT_EQ(creo::ProNoError, creo::ProLayerItemInit(ProItemType::layer, 4, part).error);
    for (const ProItemType type :
         {ProItemType::coordinateSystem, ProItemType::simplifiedRep, ProItemType::explodedState})
      EXPECT_EQ(creo::ProInvalidType, creo::ProLayerItemAdd(self, {type, 1, part, {}})) << static_cast<int>(type);
  });
}

TEST(GroupedLayers, LieOnEachOtherButNeverOnThemselves) {
  expectCases("groupLayer",
              {{"copyTo='OLD*' name_0='SELF' name_1='01*'",
                L"|SELF on OLD_A - added|SELF on OLD_B - added|01_DATUMS on OLD_A - added|01_DATUMS on OLD_B - added",
                "01_DATUMS:5 02_AXES:6,L1 OLD_A=blank:L7,L1 OLD_B:L3,L7,L1 SELF:L7 | WORK(01_DATUMS=hidden "
                "OLD_A=normal)*"},
               {"copyTo='02*' name_0='01*'", L"|01_DATUMS on 02_AXES - added", kUntouched},
               {"copyTo='01*' name_0='02*' name_1='01*'",
                L"|E:02_AXES on 01_DATUMS - failure occured while add the layer|E:01_DATUMS on 01_DATUMS - failure "
                L"occured while add the layer",
                kUntouched},
               {"copyTo='SELF' name_0='OLD_B'", L"|OLD_B on SELF - added",
                "01_DATUMS:5 02_AXES:6,L1 OLD_A=blank OLD_B:L3 SELF:L7,L4 | WORK(01_DATUMS=hidden OLD_A=normal)*"}});
}

TEST(LayerStates, AreMadeOfLayersAndTheirStatus) {
  expectCases(
      "addLayerState",
      {{"statename='%KIND%_1' name_0='0*' value_0='blank' name_1='01*' value_1='normal' name_2='OLD_A' value_2='?' "
        "name_3='SELF'",
        L"|Created new state|01_DATUMS - added|02_AXES - added|W:01_DATUMS - can't add to layer state, could be "
        L"already "
        L"inside|OLD_A - added",
        kUntouched + " OLD_1(01_DATUMS=blank 02_AXES=blank OLD_A=blank)"},
       {"statename='work' name_0='*' value_0='blank'",
        L"|E:Failure while create new state (Name could be already existing)", kUntouched},
       {"name_0='*'", L"|E:Failure while create new state (Name could be already existing)", kUntouched},
       {"statename='MY STATE: 1/2' name_0='*'", L"|E:Failure while create new state (Name could be already existing)",
        kUntouched},
       {"statename='" + std::string(32, 'S') + "' name_0='*'",
        L"|E:Failure while create new state (Name could be already existing)", kUntouched},
       {"statename='1_Gr\u00fc-n' name_0='SELF' value_0='blank'", L"|Created new state|SELF - added",
        kUntouched + " 1_Gr\u00fc-n(SELF=blank)"}});
}

TEST(LayerStates, AreShownAndDeleted) {
  expectCases("setLayerState",
              {{"statename='W*'", L"|Set layerstate: WORK",
                "01_DATUMS=hidden:5 02_AXES:6,L1 OLD_A OLD_B:L3 SELF:L7 | WORK(01_DATUMS=hidden OLD_A=normal)*"},
               {"statename='%KIND%'", L"|E:Layerstate couldn't be found: OLD", kUntouched}});
  const std::string noStates = "01_DATUMS:5 02_AXES:6,L1 OLD_A=blank OLD_B:L3 SELF:L7 |";
  expectCases("deleteLayerState", {{"name_0='X' name_1='W*'", L"|Delete layerstate: WORK", noStates}});
  {
    World world;
    writeBytes(world.models() + "/BRACKET.prt.1", kLayers);
    world.list("list.xml", layerTask("deleteLayerState", "name_0='*'") + layerTask("saveModel", ""));
    world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(std::string::npos, world.document("BRACKET.prt").find("WORK"));  // the combined state too lets it go
  }
  const std::pair<std::string, std::wstring> failures[] = {
      {"ProLayerstateDelete", L"|E:Can't delete layerstate: WORK"},
      {"ProLayerstatesGet", L"|E:The layer states can't be read"},
      {"ProLayerstateNameGet", L"|E:The name of a layer state can't be read"},
      {"ProLayerstateActivate", L"|E:Can't set layerstate: WORK"}};
  for (const auto& [operation, line] : failures) {
    const std::string task = operation == "ProLayerstateActivate" ? layerTask("setLayerState", "statename='WORK'")
                                                                  : layerTask("deleteLayerState", "name_0='WORK'");
    const Ran ran = ranOn(kLayers, task, [operation = operation](World& w, creo::ProMdl) {
      w.session().failNext(operation, creo::ProGeneralError);
    });
    EXPECT_EQ(line, ran.told);
    EXPECT_EQ(kUntouched, ran.saved);
  }
}

// Each is found wherever the search before it ended.
TEST(LayerStates, AreFoundInAnyOrder) {
  std::string states;
  for (const char name : {'A', 'B', 'C', 'D', 'E', 'F'})
    states += std::string(states.empty() ? "" : ", ") + R"({"name": ")" + name + R"("})";
  const Ran ran = ranOn(R"({"format": 1, "layerStates": [)" + states + "]}",
                        layerTask("deleteLayerState", "name_0='e' name_1='B' name_2='/[DA]/' name_3='X' name_4='F'"));
  EXPECT_EQ(
      L"|Delete layerstate: E|Delete layerstate: B|Delete layerstate: A|Delete layerstate: D|Delete layerstate: F",
      ran.told);
  EXPECT_EQ(" | C()", ran.saved);
}

TEST(LayerActions, RefuseAnInstance) {
  World world;
  world.config("kvd_filter_curmod=1\nkvd_filter_inst=1");
  writeBytes(world.models() + "/bolt.prt.1", R"({"format": 1, "layers": [{"id": 1, "name": "A"}],
      "familyTable": {"items": [], "instances": [{"name": "B1"}]}})");
  std::string tasks;
  const char* const kKeys[] = {"deleteLayer",   "renameLayer",      "changeLayerStatus", "groupLayer",
                               "addLayerState", "deleteLayerState", "setLayerState"};
  for (const char* key : kKeys) tasks += layerTask(key, "name_0='*' namef_0='*' namet_0='X' statename='S' copyTo='A'");
  world.list("list.xml", tasks);
  world.runOn(L"B1", creo::ProMdlType::part, "list.xml");
  std::size_t refusals = 0;
  const std::wstring all = told(world.log());
  for (std::size_t at = 0; (at = all.find(L"|W:Model is a instance, action is canceled", at)) != all.npos; ++at)
    ++refusals;
  EXPECT_EQ(std::size(kKeys), refusals) << text::toUtf8(all);
}

}  // namespace
}  // namespace test
