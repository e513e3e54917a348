// Layers made after a template: its rules, and what the action changes meanwhile and puts back.
#include <filesystem>

#include "actions/action_fixture.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "creo/ProUtil.h"
#include "headless/store/document.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace test {
namespace {

class LayerTemplates : public ActionTest {
 protected:
  void SetUp() override {
    world.config("kvd_filter_curmod=1\nkvd_filter_inst=1");
    writeBytes(world.models() + "/BRACKET.prt.1", R"({"format": 1, "layers": [{"id": 4, "name": "HELD"}]})");
    world.member("models/company.prt.2", R"({"format": 1, "layers": [
        {"id": 1, "name": "DATUMS", "ruleBased": true, "rules": ["type = datum plane"]},
        {"id": 2, "name": "AXES", "ruleBased": true, "independentRules": true, "rules": ["type = axis"]}]})");
    writeBytes(world.models() + "/std/standard.prt.1",
               R"({"format": 1, "layers": [{"id": 1, "name": "DATUMS", "ruleBased": true, "rules": ["old"]}]})");
  }
  static std::string add(const std::string& attributes) { return task("addLayerFromTemplate", attributes); }
  void startOn(const std::string& tasks) {
    world.list("list.xml", tasks + task("saveModel"));
    world.start();
    world.open(L"BRACKET", creo::ProMdlType::part);
    creo::ProConfigoptSet(L"default_layer_model", L"d:\\std\\standard.prt");
  }
  // The log without the title of the saving, of the lines that name paths only their beginning.
  std::wstring ran() {
    world.run("list.xml");
    std::wstring all;
    for (const std::wstring& line : text::split(told(world.log()), L'|')) {
      const auto path = line.find(L'\\');
      if (!line.starts_with(L"B")) all += L"|" + (path == line.npos ? line : line.substr(0, line.rfind(L' ', path)));
    }
    return all;
  }
  // "DATUMS[type = datum plane]i a": rules, whether they are independent and associative.
  std::string saved(const std::string& file = "BRACKET.prt") const {
    headless::ModelRecord record;
    if (headless::readDocument(world.document(file), record)) return "unreadable";
    std::string all;
    for (const headless::LayerRecord& layer : record.layers) {
      all += (all.empty() ? "" : " ") + layer.name + "[";
      for (const std::string& rule : layer.rules) all += rule;
      all += std::string("]") + (layer.independentRules ? "i" : "") + (layer.associativeRules ? "a" : "");
    }
    return all;
  }
  void expectPutBack() { expectPutBack(world); }
  // What the action must leave as it was: the option, the folder, the models in memory, the folder of logs.
  static void expectPutBack(const World& own) {
    EXPECT_EQ(L"d:\\std\\standard.prt", creo::ProConfigoptGet(L"default_layer_model").value);
    EXPECT_EQ(L"d:\\", creo::ProDirectoryCurrentGet().value);
    EXPECT_FALSE(creo::ProMdlInit(L"COMPANY", creo::ProMdlType::part));
    for (const auto& entry : std::filesystem::directory_iterator(own.temp()))
      EXPECT_EQ(std::string::npos, entry.path().string().find(".prt")) << entry.path();
  }
};

const std::string kTemplate = "view='@project_dir@/company.prt' rowc='3' name_0='DATUMS' name_1='AXES' name_2='OTHER' ";

TEST_F(LayerTemplates, GiveNewLayersTheirRules) {
  startOn(add(kTemplate));
  EXPECT_EQ(
      L"|Can't get old template model init, but that's ok|From path:|Layermodel found and retrieved|renamed file "
      L"alright|try to add a layer with name 'DATUMS'|Layer 'DATUMS' created|try to add a layer with name 'AXES'|Layer "
      L"'AXES' created|try to add a layer with name 'OTHER'|Layer 'OTHER' created|Try to delete template model|Try to "
      L"delete:|Delete the file from temp directory",
      ran());
  EXPECT_EQ("HELD[] DATUMS[type = datum plane] AXES[type = axis]i OTHER[]", saved());
  EXPECT_TRUE(world.session().unknownSteps().empty());
  expectPutBack();
}

// What rules find is on the layer: once for all, or, where they are associative, whatever fits at the time.
TEST_F(LayerTemplates, RulesFindWhatLiesOnTheLayer) {
  writeBytes(world.models() + "/BRACKET.prt.1", R"({"format": 1, "layers": [{"id": 4, "name": "HELD"}], "features": [
      {"id": 5, "number": 1, "type": 923, "name": "A_TOP"}, {"id": 6, "number": 2, "type": 923, "name": "SIDE"},
      {"id": 7, "number": 3, "type": 926, "name": "A_1"}, {"id": 8, "number": 4, "type": 911, "name": "A_HOLE"}],
      "dimensions": [{"id": 9, "symbol": "WIDTH", "value": 2.0}]})");
  world.member("models/company.prt.3", R"({"format": 1, "layers": [
      {"id": 1, "name": "PLANES", "ruleBased": true, "rules": ["type = Datum Plane & name == a_*"]},
      {"id": 2, "name": "REST", "ruleBased": true, "rules": ["type = axis", "odd", "type = feature 911", "name = *_1"]},
      {"id": 3, "name": "SIZES", "ruleBased": true, "rules": ["type = dimension & name = w*h"]},
      {"id": 4, "name": "NONE", "ruleBased": true, "rules": ["type = feature x", "name = ", "name = A & name = B"]}]})");
  world.list("again.xml", task("deleteLayer", "name_0='PLANES' copyTo='HELD'") + task("saveModel"));
  const std::string copy = "view='@project_dir@/company.prt' ";
  startOn(add(copy + "rowc='1' name_0='PLANES' assoc='true'") +
          add(copy + "rowc='3' name_0='REST' name_1='SIZES' name_2='NONE'") +
          task("renameFeature", "feat='4' featname='SIDE' name='A_SIDE'") +
          task("renameFeature", "feat='4' featname='A_1' name='OTHER'") +
          task("deleteLayer", "name_0='SIZES' copyTo='HELD' delallempty='true'"));
  ran();
  ASSERT_EQ("HELD[] PLANES[type = Datum Plane & name == a_*]a REST[type = axisoddtype = feature 911name = *_1]",
            saved());
  // Ids of what is put on the layer of that place.
  const auto items = [this](std::size_t layer) {
    headless::ModelRecord record;
    std::string ids;
    if (headless::readDocument(world.document("BRACKET.prt"), record) || layer >= record.layers.size())
      return ids + "?";
    for (const headless::ItemRecord& item : record.layers[layer].items) ids += std::to_string(item.id) + " ";
    return ids;
  };
  EXPECT_EQ("9 ", items(0));    // what SIZES had
  EXPECT_EQ("", items(1));      // found, not put there
  EXPECT_EQ("7 8 ", items(2));  // as they were called when the layer was made
  world.run("again.xml");
  EXPECT_EQ("9 5 6 ", items(0));  // the renamed plane, too
}

TEST_F(LayerTemplates, RulesAreCheckedInTheDialogOfEachTree) {
  for (const wchar_t* floating : {L"YES", L"NO"}) {
    World own;
    own.config("kvd_filter_curmod=1");
    writeBytes(own.models() + "/BRACKET.prt.1", R"({"format": 1})");
    writeBytes(own.models() + "/SHEET.drw.1", R"({"format": 1, "models": [{"name": "BRACKET", "type": "prt"}]})");
    for (const char* type : {"prt", "drw"})
      own.member(std::string("models/company.") + type + ".1",
                 R"({"format": 1, "layers": [{"id": 1, "name": "AXES", "rules": ["r"]}]})");
    const auto layer = [&](const std::string& type, const std::string& name, const std::string& attributes) {
      return add("view='@project_dir@/company." + type + "' rowc='1' name_0='" + name + "' " + attributes);
    };
    own.list("prt.xml", layer("prt", "AXES", "indep='true' assoc='true'") + layer("prt", "B", "assoc='true'") +
                            layer("prt", "C", "indep='true' indeprev='true'") + task("saveModel"));
    own.list("drw.xml", layer("drw", "AXES", "indep='true'") + task("saveModel"));
    own.start();
    creo::ProConfigoptSet(L"floating_layer_tree", floating);
    const auto described = [&](const std::string& list, const std::wstring& model, creo::ProMdlType type) {
      own.open(model, type);
      own.run(list);
      headless::ModelRecord record;
      const std::string file = text::toUtf8(model) + (type == creo::ProMdlType::drawing ? ".drw" : ".prt");
      EXPECT_FALSE(headless::readDocument(own.document(file), record));
      std::string all;
      for (const auto& entry : record.layers)
        all += entry.name + (entry.independentRules ? "i" : "") + (entry.associativeRules ? "a " : " ");
      return all;
    };
    EXPECT_EQ("AXESia Ba C ", described("prt.xml", L"BRACKET", creo::ProMdlType::part));
    EXPECT_EQ("AXESi ", described("drw.xml", L"SHEET", creo::ProMdlType::drawing));
    EXPECT_TRUE(own.session().unknownSteps().empty()) << text::toUtf8(own.session().unknownSteps().front());
  }
}

TEST_F(LayerTemplates, WithoutAViewLayersAreMadeAlone) {
  startOn(add("rowc='4' name_0='HELD' name_1='NEW' name_2='A;B' name_3='' name_4='LEFT_OUT'") +
          add("rowc='x' name_0='Y'"));
  EXPECT_EQ(
      L"|try to add a layer with name 'HELD'|W:A layer with the name 'HELD' already exists|try to add a layer with "
      L"name 'NEW'|Layer 'NEW' created|try to add a layer with name 'A;B'|E:The layer name 'A;B' is no accepted layer "
      L"name|try to add a layer with name ''|E:The layer name '' is no accepted layer name|E:Can't parse linecount",
      ran());
  EXPECT_EQ("HELD[] NEW[]", saved());
  EXPECT_TRUE(world.session().ranSteps().empty());
}

TEST_F(LayerTemplates, TheOptionsOwnModelServes) {
  startOn(add("view='@default_layer_model@' rowc='1' name_0='DATUMS'"));
  EXPECT_NE(std::wstring::npos, ran().find(L"|W:File has already the name|"));
  EXPECT_EQ("HELD[] DATUMS[old]", saved());
  expectPutBack();
}

TEST_F(LayerTemplates, WithoutAModelOfTheOptionNothingIsRenamed) {
  for (const wchar_t* option : {L"", L"d:\\std\\", L"d:\\std\\standard.txt"}) {
    World own;
    writeBytes(own.models() + "/BRACKET.prt.1", R"({"format": 1})");
    own.member("models/company.prt.1", R"({"format": 1, "layers": [{"id": 1, "name": "DATUMS", "rules": ["r"]}]})");
    own.list("list.xml", add(kTemplate) + task("saveModel"));
    own.start();
    own.open(L"BRACKET", creo::ProMdlType::part);
    creo::ProConfigoptSet(L"default_layer_model", option);
    own.run("list.xml");
    const std::wstring log = told(own.log());
    for (const wchar_t* word : {L"rename", L"File has already the name", L"W:", L"E:"})
      EXPECT_EQ(std::wstring::npos, log.find(word)) << text::toUtf8(log);
    EXPECT_NE(std::string::npos, own.document("BRACKET.prt").find("\"r\""));
    EXPECT_EQ(option, creo::ProConfigoptGet(L"default_layer_model").value);
  }
}

TEST_F(LayerTemplates, ThatArentThereMakeNoLayers) {
  world.member("models/damaged.prt.1", "{");
  startOn(add("view='@project_dir@/none.prt' rowc='1' name_0='X'") +
          add("view='@project_dir@/nowhere/company.prt' rowc='1' name_0='X'") +
          add("view='@project_dir@/company.txt' rowc='1' name_0='X'") +
          add("view='@project_dir@/damaged.prt' rowc='1' name_0='X'"));
  const std::wstring begin = L"|Can't get old template model init, but that's ok|From path:|E:";
  const std::wstring notFound = begin + L"The template layer file couldn't be found in the specified directory";
  EXPECT_EQ(notFound + notFound + notFound + begin + L"The template layer file can't be opened / permission failure",
            ran());
  EXPECT_EQ("HELD[]", saved());
  expectPutBack();
}

// Each step of the copying fails once; layers are made all the same, and everything is put back.
TEST_F(LayerTemplates, ServeThemselvesWhereTheyCantBeCopied) {
  const std::pair<const char*, std::wstring> cases[] = {
      {"ProMdlnameBackup", L"|W:Failure while backup to temppath|"},
      {"ProMdlRename", L"|W:Can't rename the file|"},
      {"ProMdlErase", L"|W:Failure while erase copy model|"},
  };
  for (const auto& [operation, line] : cases) {
    World own;
    writeBytes(own.models() + "/BRACKET.prt.1", R"({"format": 1})");
    writeBytes(own.models() + "/std/standard.prt.1", R"({"format": 1})");
    own.member("models/company.prt.1", R"({"format": 1, "layers": [{"id": 1, "name": "DATUMS", "rules": ["r"]}]})");
    own.list("list.xml", add(kTemplate) + task("saveModel"));
    own.start();
    own.open(L"BRACKET", creo::ProMdlType::part);
    creo::ProConfigoptSet(L"default_layer_model", L"d:\\std\\standard.prt");
    own.session().failNext(operation, creo::ProGeneralError);
    own.run("list.xml");
    EXPECT_NE(std::wstring::npos, told(own.log()).find(line)) << operation << text::toUtf8(told(own.log()));
    EXPECT_NE(std::string::npos, own.document("BRACKET.prt").find("\"r\"")) << operation;
    expectPutBack(own);
  }
}

// One behind the other both find the names that they want.
TEST_F(LayerTemplates, ServeSeveralActionsInARow) {
  const std::string one = "view='@project_dir@/company.prt' rowc='1' name_0=";
  startOn(add(one + "'DATUMS'") + add(one + "'AXES'"));
  const std::wstring log = ran();
  EXPECT_EQ(std::wstring::npos, log.find(L"E:")) << text::toUtf8(log);
  EXPECT_EQ(std::wstring::npos, log.find(L"W:")) << text::toUtf8(log);
  EXPECT_EQ("HELD[] DATUMS[type = datum plane] AXES[type = axis]i", saved());
  expectPutBack();
}

// What is erased holds its name until control is back.
TEST_F(LayerTemplates, KeepTheirNameWhereTheOptionsModelHadToGo) {
  startOn(add(kTemplate));
  creo::ProDirectoryChange(L"d:\\std\\");
  const auto standard = creo::ProMdlRetrieve(L"STANDARD", creo::ProMdlType::part);
  creo::ProDirectoryChange(L"d:\\");
  EXPECT_NE(std::wstring::npos, ran().find(L"|W:Can't rename the file|"));
  EXPECT_EQ("HELD[] DATUMS[type = datum plane] AXES[type = axis]i OTHER[]", saved());
  EXPECT_EQ(creo::ProBadInputs, creo::ProMdlNameGet(standard.value).error);
  expectPutBack();
}

TEST_F(LayerTemplates, NobodyElsesModelIsThrownAway) {
  startOn(add(kTemplate));
  creo::ProDirectoryChange(L"d:\\std\\");
  const auto standard = creo::ProMdlRetrieve(L"STANDARD", creo::ProMdlType::part);
  creo::ProDirectoryChange(L"d:\\");
  creo::ProModelitemNameSet({creo::ProItemType::layer, 1, standard.value, {}}, L"CHANGED");
  EXPECT_EQ(L"|E:Can't erase old template model", ran());
  EXPECT_TRUE(creo::ProMdlModificationVerify(standard.value).value);
  expectPutBack();
}

}  // namespace
}  // namespace test
