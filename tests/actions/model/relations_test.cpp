// The actions on relations and on Pro/PROGRAM texts.
#include <gmock/gmock.h>

#include "actions/action_fixture.h"
#include "core/state.h"
#include "creo/ProRelset.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"
#include "os/surroundings.h"

namespace test {
namespace {

// Matches the text; what is longer than that is given up.
std::string givenUpButOn(const std::string& text) { return "/(*LIMIT_MATCH=40)^(?:" + text + "$|(?:.?){7}#)/"; }

class RelationActions : public testing::Test {
 protected:
  RelationActions() : own_(std::make_unique<World>()) {}
  static std::string task(const std::string& type, const std::string& attributes = "") {
    return "<task type='" + type + "' version='3' forPRT='true' forEF='false' " + attributes + "/>";
  }
  // A part with two numbers, these relations, and, on request, more members.
  void part(const std::vector<std::string>& relations, const std::string& more = "") {
    std::string lines;
    for (const std::string& line : relations) lines += (lines.empty() ? "\"" : ", \"") + line + "\"";
    own_->endSession();
    for (const auto& entry : std::filesystem::directory_iterator(own_->models())) std::filesystem::remove(entry.path());
    writeBytes(own_->models() + "/bracket.prt.1",
               R"({"format": 1, "parameters": [{"name": "A", "type": "double", "value": 1.0},
        {"name": "B", "type": "double", "value": 2.0}], "relations": [)" +
                   lines + "]" + more + "}");
  }
  const headless::ModelRecord& record() {
    if (!headless::Session::currentOrNull()) own_->start();
    const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part);
    if (!model) throw std::runtime_error(text::toUtf8(own_->messages()));
    return own_->session().models().find(model.value)->document->record;
  }
  // A package is unpacked once in a world: the next list needs another one, with the models of this one.
  void again() {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(own_->models()))
      files[entry.path().filename().string()] = readBytes(entry.path().string());
    own_.reset();
    own_ = std::make_unique<World>();
    own_->config("kvd_write_history_in_models=0");
    for (const auto& [name, bytes] : files) writeBytes(own_->models() + "/" + name, bytes);
  }
  // Runs and saves; the operation's next call fails.
  std::wstring go(const std::string& tasks, const char* failing = nullptr) {
    again();
    own_->list("list.xml", tasks + task("saveModel"));
    own_->start();
    own_->open(L"BRACKET", creo::ProMdlType::part);
    if (failing) own_->session().failNext(failing, creo::ProGeneralError);
    own_->run("list.xml");
    const std::wstring log = told(own_->log());
    return log.substr(0, log.find(L"|B1 Save model"));
  }
  std::unique_ptr<World> own_;
  std::string lines() {
    std::string all;
    for (const std::string& line : record().relations) all += (all.empty() ? "" : "|") + line;
    return all;
  }
};

TEST_F(RelationActions, LinesAreAddedAtTheStartTheEndOrAPlace) {
  const struct {
    std::string type, attributes, expected;
  } cases[] = {
      {"addModelRelationLines", "relationlinec='2' relationline0='B = 3' relationline1='A = %B%'",
       "B = 3|A = 2.000000|A = 5"},
      {"addModelRelationLines", "relationlinec='2' relationline0='B = 3' relationline1='' onEnd='true'", "A = 5|B = 3"},
      {"addModelRelationLines", "relationlinec='1' relationline0=''", "A = 5"},
      {"addModelRelationLines", "relationlinec='3' relationline0='B = 3' relationline1='' relationline2='A = B'",
       "B = 3||A = B|A = 5"},
      {"editModelRelationLines",
       "rel='true' editlinec='1' editline0='' locline='A*' location='1' addTextc='1' addText0='B = 1'", "B = 1|A = 5"},
      {"editModelRelationLines",
       "rel='true' editlinec='1' editline0='' locline='A*' location='2' addTextc='1' addText0='B = 1'", "A = 5|B = 1"},
      {"editModelRelationLines", "rel='true' editlinec='1' editline0='A = *' replWord='5' through='6'", "A = 6"},
      {"editModelRelationLines", "rel='true' editlinec='1' editline0='/^A/' replWord='*' through='@line@ + 1'",
       "A = 5 + 1"},
  };
  for (const auto& c : cases) {
    part({"A = 5"});
    go(task(c.type, c.attributes));
    EXPECT_EQ(c.expected, lines()) << c.attributes;
  }
}

TEST_F(RelationActions, ContinuedLinesCommentsAndBlocksGoAsAWhole) {
  const std::vector<std::string> nested = {"IF A > 1", "B = 1", "IF A > 2", "B = 2",           "ENDIF/* inner",
                                           "ELSE",     "B = 3", "endif",    "DIFF = 4 * 100%", "A = 7"};
  const struct {
    std::vector<std::string> relations;
    std::string attributes, expected;
  } cases[] = {
      {{"A = 1 + \\\\ ", "2 + \\\\", "3", "B = 1"}, "dellinec='1' delline0='A = *'", "B = 1"},
      {{"A = 1", "/* A = 2", "B = 1"}, "dellinec='1' delline0='*A = *' comment_out='true'", "/* A = 1|/* A = 2|B = 1"},
      {{"A = 1", "A = 2", "A = 3", "B = 1"}, "dellinec='2' delline0='A*' delline1='B*'", ""},
      {nested, "startline='IF A > 1' endif='true'", "DIFF = 4 * 100%|A = 7"},
      {nested, "startline='IF A > 2' endif='true' comment_out='true'",
       "IF A > 1|B = 1|/* IF A > 2|/* B = 2|/* ENDIF/* inner|ELSE|B = 3|endif|DIFF = 4 * 100%|A = 7"},
      {{"A = 1", "B = 1", "A = 2", "A = 1", "A = 2"}, "startline='A = 1' endline='A = 2'", ""},
      {{"A = 2", "A = 1", "B = 1"}, "startline='A = 1' endline='A = 2'", "A = 2|A = 1|B = 1"},
      // an end that can't be told: the block stays
      {{"A = 1", "B = 2 * 1", "A = 2", "B = A"},
       "startline='A = 1' endline='" + givenUpButOn("A = 2") + "'",
       "A = 1|B = 2 * 1|A = 2|B = A"},
  };
  for (const auto& c : cases) {
    part(c.relations, R"(, "dimensions": [{"id": 1, "symbol": "DIFF", "value": 1.0}])");
    go(task("deleteModelRelationLines", "rel='true' ignoreFailure='true' " + c.attributes));
    EXPECT_EQ(c.expected, lines()) << c.attributes;
  }
}

TEST_F(RelationActions, WhatFailsIsRolledBackUnlessItMayFail) {
  const std::string add = "relationlinec='1' onEnd='true' relationline0='B = NOWHERE'";
  part({"A = 5"});
  EXPECT_EQ(
      L"B0 Add model relation lines|Relations:|B = NOWHERE|"
      L"E:Failure in new relations, old relations should be changed manually|Post regeneration relations:",
      go(task("addModelRelationLines", add)));
  EXPECT_EQ("A = 5", lines());
  EXPECT_THAT(go(task("addModelRelationLines", add + " ignoreFailure='true'")),
              testing::HasSubstr(L"W:Failure in new relations, old relations should be changed manually"));
  EXPECT_EQ("A = 5|B = NOWHERE", lines());
  const std::string good = "relationlinec='1' relationline0='A = 6' postlinec='1' postline0='A = 8'";
  EXPECT_THAT(
      go(task("addModelRelationLines", good)),
      testing::HasSubstr(L"E:Failure in current relations, the new relation lines shouldn't be added automatically"));
  EXPECT_EQ("A = 5|B = NOWHERE", lines());
  EXPECT_THAT(go(task("deleteModelRelationLines", "rel='true' dellinec='1' delline0='B*'"), "ProRelsetRelationsSet"),
              testing::HasSubstr(L"E:Failure in new relations"));
  EXPECT_EQ("A = 5|B = NOWHERE", lines());
}

TEST_F(RelationActions, NothingIsLostWhereLinesCantBeReadOrBuilt) {
  const std::string add = "relationlinec='2' relationline0='B = 3' relationline1='";
  const std::string tooLong = "/* " + std::string(270, 'x');
  part({"A = 5"});
  for (const std::string& text :
       {task("addModelRelationLines", add + "A = 4'"),
        task("deleteModelRelationLines", "rel='true' dellinec='1' delline0='A*'"),
        task("editModelRelationLines", "rel='true' editlinec='1' editline0='A*' replWord='5' through='6'")}) {
    EXPECT_THAT(go(text, "ProRelsetRelationsGet"), testing::HasSubstr(L"E:Can't read the relations")) << text;
    EXPECT_EQ("A = 5", lines()) << text;
  }
  for (const std::string& entry :
       {task("addModelRelationLines", add + "A = 4'"),
        task("deleteModelRelationLines", "rel='true' dellinec='1' delline0='A*'"),
        task("editModelRelationLines", "rel='true' editlinec='1' editline0='A*' replWord='5' through='6'"),
        task("setRelationUnitSensitive", "rel='true' unitsensitive='true'")}) {
    for (const char* operation : {"ProMdlToModelitem", "ProModelitemToRelset"})
      EXPECT_THAT(go(entry, operation), testing::HasSubstr(L"E:Can't reach the relations, they aren't changed"))
          << entry;
    EXPECT_EQ("A = 5", lines()) << entry;
  }
  EXPECT_THAT(go(task("addModelRelationLines", "postlinec='1' postline0='B = 3'"), "ProRelsetCreate"),
              testing::HasSubstr(L"E:Can't reach the post relations, they aren't changed"));
  EXPECT_THAT(go(task("addModelRelationLines", add + tooLong + "'")),
              testing::HasSubstr(L"E:The line 'relationline1' can't be built, no relation lines are added"));
  EXPECT_EQ("A = 5", lines());
  // A long line is edited and deleted like any other; its signs are no format.
  part({tooLong + "%s%n", "B = 1"});
  EXPECT_THAT(
      go(task("editModelRelationLines", "rel='true' editlinec='1' editline0='*%s*' replWord='*' through='@line@'")),
      testing::HasSubstr(L"can't be built, the line stays"));
  go(task("editModelRelationLines", "rel='true' editlinec='1' editline0='*%s*' replWord='%n' through='%d'"));
  EXPECT_EQ(tooLong + "%s%d|B = 1", lines());
  go(task("deleteModelRelationLines", "rel='true' dellinec='1' delline0='/%s%d$/'"));
  EXPECT_EQ("B = 1", lines());
}

TEST_F(RelationActions, AnIfWithoutItsEndStays) {
  part({"A = 5", "IF A > 1", "B = 1"});
  EXPECT_THAT(go(task("deleteModelRelationLines", "rel='true' startline='IF*' endif='true'")),
              testing::HasSubstr(L"No changes done on relations"));
  EXPECT_EQ("A = 5|IF A > 1|B = 1", lines());
}

TEST_F(RelationActions, OneContinuedRelationOfManyLinesIsWalkedOnce) {
  std::vector<std::string> many(20000, "A \\\\");
  many.emplace_back("B = 1");
  part(many);
  go(task("deleteModelRelationLines",
          "rel='true' comment_out='true' ignoreFailure='true' dellinec='2' delline0='*' delline1='A*'"));
  const auto& left = record().relations;
  ASSERT_EQ(many.size(), left.size());
  EXPECT_EQ("/* A \\", left.front());
  EXPECT_EQ("/* B = 1", left.back());
}

TEST_F(RelationActions, PostRelationsUnitsAndRefusals) {
  part({}, R"(, "postRelations": ["A = 1"], "familyTable": {"items": [], "instances": [{"name": "INST"}]})");
  EXPECT_EQ(L"B0 Set relation unit sensitive|no relset found|changed the post relation unit sensitve",
            go(task("setRelationUnitSensitive", "rel='true' postrel='true' unitsensitive='true'")));
  EXPECT_EQ(std::optional(true), record().postUnitSensitive);
  EXPECT_EQ(std::nullopt, record().unitSensitive);
  EXPECT_EQ(L"B0 Edit model relation lines|no relset found|Edit lines|A = 3",
            go(task("editModelRelationLines",
                    "rel='true' postrel='true' editlinec='1' editline0='A*' replWord='1' through='3'")));
  EXPECT_EQ((std::vector<std::string>{"A = 3"}), record().postRelations);
  const std::string group =
      "<task type='groupActions' version='3' forPRT='true' forEF='false' reworkMode='1'><subtasks>" +
      task("deleteModelRelationLines", "rel='true' dellinec='1' delline0='*'") + "</subtasks></task>";
  EXPECT_THAT(go(group), testing::HasSubstr(L"W:Model is a instance, action is canceled"));
}

TEST_F(RelationActions, RelationsThatDontHeedUnitsCountWithTheNumbersAsTheyStand) {
  part({"A = LEN + 1 [in]"}, R"(, "postRelations": ["B = LEN"])");
  std::string text = readBytes(own_->models() + "/bracket.prt.1");
  const std::string list = R"("parameters": [)";
  text.insert(text.find(list) + list.size(), R"({"name": "LEN", "type": "double", "value": 2, "units": "in"}, )");
  writeBytes(own_->models() + "/bracket.prt.1", text);
  const auto expect = [&](double a, double b, const std::string& tasks) {
    go(tasks + task("regenerateModel", "force='true'"));
    const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part).value;
    const auto number = [&](const wchar_t* name) {
      return creo::ProParameterValueGet(creo::ProParameterInit(creo::ProMdlToModelitem(model).value, name).value)
          .value.real;
    };
    EXPECT_NEAR(a, number(L"A"), 1e-9) << tasks;
    EXPECT_NEAR(b, number(L"B"), 1e-9) << tasks;
  };
  expect(76.2, 50.8, "");
  expect(3, 50.8, task("setRelationUnitSensitive", "rel='true' unitsensitive='false'"));
  expect(76.2, 50.8, task("setRelationUnitSensitive", "rel='true' postrel='true' unitsensitive='true'"));
}

TEST_F(RelationActions, OfFeaturesAndSketchesRunAndDrive) {
  part({"A = 5"}, R"(, "features": [{"id": 4, "type": 911, "name": "HOLE", "relations": ["B = A * 2"],
       "sections": [{"relations": ["C = NOWHERE"]}]}])");
  own_->start();
  const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part).value;
  EXPECT_EQ(creo::ProGeneralError, creo::ProSolidRegenerate(model, 0));
  EXPECT_THAT(own_->session().messages().back(), testing::HasSubstr(L"feature HOLE, relation line 1"));
  const creo::ProModelitem hole{creo::ProItemType::feature, 4, model, {}};
  ASSERT_EQ(creo::ProNoError, creo::ProRelsetRelationsSet({hole, 0}, {}));
  EXPECT_EQ(creo::ProNoError, creo::ProSolidRegenerate(model, 0));
  const auto b = creo::ProParameterInit(creo::ProMdlToModelitem(model).value, L"B");
  EXPECT_EQ(10, creo::ProParameterValueGet(b.value).value.real);
  EXPECT_EQ(creo::ProParameterDriver::relation, creo::ProParameterDriverGet(b.value).value);
}

TEST_F(RelationActions, AFeaturesOwnParametersComeFirstAndPostRelationsDriveToo) {
  part({"A = 5"}, R"(, "postRelations": ["B = W"], "features": [{"id": 4, "type": 911, "name": "HOLE",
       "parameters": [{"name": "A", "type": "double", "value": 7}, {"name": "DEPTH", "type": "double", "value": 1}],
       "relations": ["DEPTH = A * 2", "W = A"]}])");
  own_->start();
  const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part).value;
  EXPECT_EQ(creo::ProNoError, creo::ProSolidRegenerate(model, 0));
  const creo::ProModelitem hole{creo::ProItemType::feature, 4, model, {}};
  const auto value = [](const creo::ProModelitem& owner, const wchar_t* name) {
    return creo::ProParameterValueGet(creo::ProParameterInit(owner, name).value).value.real;
  };
  const creo::ProModelitem whole = creo::ProMdlToModelitem(model).value;
  EXPECT_EQ(14, value(hole, L"DEPTH"));
  EXPECT_EQ(7, value(whole, L"B")) << "the feature's own A";
  EXPECT_EQ(5, value(whole, L"A"));
  const auto b = creo::ProParameterInit(whole, L"B");
  EXPECT_EQ(creo::ProParameterDriver::relation, creo::ProParameterDriverGet(b.value).value);
}

// ---- Pro/PROGRAM

class Program : public RelationActions {
 protected:
  void SetUp() override {
    part({"A = 5", "B = A"},
         R"x(, "features": [{"id": 1, "type": 923, "name": "BASE"}, {"id": 7, "type": 911, "name": "HOLE"}],
      "program": ["VERSION 1", "LISTING FOR PART BRACKET", "INPUT", "A NUMBER", "\"how long?\"", "  B NUMBER", "END INPUT",
      "RELATIONS", "END RELATIONS", "ADD FEATURE", "INTERNAL FEATURE ID 1", "END ADD", "IF A > 1 /* 100%d", "ADD FEATURE",
      "INTERNAL FEATURE ID 7", "END ADD", "END IF", "MASSPROP", "END MASSPROP"])x");
  }
  std::string program() {
    std::string all;
    for (const std::string& line : record().program) all += (all.empty() ? "" : "|") + line;
    return all;
  }
  [[nodiscard]] bool filesAreGone() const {
    return !os::files().exists(core::pluginState().tempPath + L"proProgram.txt") &&
           !os::files().exists(core::pluginState().tempPath + L"proProgramChanged.txt");
  }
};

TEST_F(Program, InputLinesGoByTheirFirstWord) {
  EXPECT_EQ(
      L"B0 delete Pro/PROGRAM input lines|Export to file|Change the file|delete the following Pro/PROGRAM input lines:|"
      L"B NUMBER|Reimport the file|Delete the file",
      go(task("deleteModelProProgramInputLines", "name_0='b' name_2='A'")));
  EXPECT_THAT(program(),
              testing::HasSubstr("INPUT|A NUMBER|\"how long?\"|END INPUT|RELATIONS|A = 5|B = A|END RELATIONS"));
  EXPECT_TRUE(filesAreGone());
}

// Without its input it would ask for the one above.
TEST_F(Program, WhatAsksForAnInputGoesWithIt) {
  for (const char* entry : {"<task type='deleteModelProProgramInputLines' name_0='A'",
                            "<task type='deleteModelProProgramLines' delline='A NUMBER' endif='false'"}) {
    SetUp();
    EXPECT_THAT(go(std::string(entry) + " version='3' forPRT='true' forEF='false'/>"),
                testing::HasSubstr(L"A NUMBER|\"how long?\""));
    EXPECT_THAT(program(), testing::HasSubstr("INPUT|  B NUMBER|END INPUT")) << entry;
  }
  // A remark between them keeps them no less together.
  part({"A = 5"},
       R"x(, "program": ["VERSION 1", "LISTING FOR PART BRACKET", "INPUT", "B NUMBER", "A NUMBER", "/* mm", "",
      "\"how long?\"", "END INPUT", "RELATIONS", "END RELATIONS", "MASSPROP", "END MASSPROP"])x");
  go(task("deleteModelProProgramInputLines", "name_0='A'"));
  EXPECT_THAT(program(), testing::HasSubstr("INPUT|B NUMBER|/* mm||END INPUT"));
}

TEST_F(Program, WithoutALineThatGoesItIsNotTouched) {
  const std::string before = program();
  EXPECT_EQ(
      L"B0 delete Pro/PROGRAM input lines|Export to file|Change the file|delete the following Pro/PROGRAM input lines:|"
      L"No changes done on the Pro/PROGRAM|Delete the file",
      go(task("deleteModelProProgramInputLines", "name_0='NONE'")));
  EXPECT_THAT(go(task("deleteModelProProgramLines", "delline='none' endif='false'")),
              testing::HasSubstr(L"No changes done on the Pro/PROGRAM"));
  EXPECT_EQ(before, program());
}

TEST_F(Program, LinesBlocksAndFeaturesGo) {
  const struct {
    std::string attributes, without, with;
  } cases[] = {
      {"delline='A NUMBER&#10;*how*' endif='false' excl_start_end='false'", "A NUMBER", "  B NUMBER"},
      {"startline='A NUMBER' endline='A*' endif='false' excl_start_end='false'", "", "A NUMBER"},
      {"startline='INPUT' endline='END INPUT' endif='false' excl_start_end='true'", "A NUMBER", "INPUT|END INPUT"},
      {"startline='ADD FEATURE' endline='nowhere' endif='false' excl_start_end='false' delline='x'", "",
       "END MASSPROP"},
      {"delline='IF A > 1 /* 100%d&#10;END IF' endif='false' excl_start_end='false'", "IF A", "INTERNAL FEATURE ID 7"},
  };
  for (const auto& c : cases) {
    const std::wstring log = go(task("deleteModelProProgramLines", c.attributes));
    if (!c.without.empty()) EXPECT_THAT(program(), testing::Not(testing::HasSubstr(c.without))) << c.attributes;
    EXPECT_THAT(program(), testing::HasSubstr(c.with)) << c.attributes;
    EXPECT_TRUE(filesAreGone());
    SetUp();
  }
  // A condition as programs write it, to its end; what stands behind it stays.
  go(task("deleteModelProProgramLines", "startline='IF A*' excl_start_end='false'"));
  EXPECT_THAT(program(), testing::Not(testing::HasSubstr("IF A")));
  ASSERT_EQ(1U, record().features.size());
  SetUp();
  // The blocks of both features; the second stands in a condition, which stays.
  go(task("deleteModelProProgramLines", "startline='IF A*' endif='false' endline='END IF' excl_start_end='true'"));
  EXPECT_EQ(1U, record().features.size());
  EXPECT_EQ("BASE", record().features.front().name);
}

TEST_F(Program, OfADocumentMayLackItsEndAndFeaturesGoWithWhatIsTheirs) {
  part({"A = 5"}, R"x(, "features": [{"id": 1, "name": "BASE", "dimensions": [4]}, {"id": 7, "name": "HOLE"}],
      "dimensions": [{"id": 4, "symbol": "W", "value": 3}, {"id": 5, "symbol": "H", "value": 2}],
      "familyTable": {"items": [{"type": "feature", "name": "BASE"}, {"type": "dimension", "name": "W"}],
                      "instances": [{"name": "SMALL", "values": {"BASE": "N", "W": 2}}]},
      "layers": [{"id": 20, "name": "L", "items": [{"type": "feature", "id": 1}, {"type": "feature", "id": 7}]}],
      "program": ["INPUT", "B NUMBER", "A NUMBER", "END INPUT"])x");
  go(task("deleteModelProProgramLines", "delline='*ID 1' endif='false' excl_start_end='false'"));
  EXPECT_THAT(own_->messages(), testing::HasSubstr(L"ADD without the id of its feature"));
  EXPECT_EQ(2U, record().features.size());
  go(task("deleteModelProProgramInputLines", "name_0='B'"));
  EXPECT_THAT(program(), testing::HasSubstr("INPUT|A NUMBER|END INPUT"));
  writeBytes(own_->models() + "/p.txt",
             "INPUT\nEND INPUT\nRELATIONS\nEND RELATIONS\nADD FEATURE\nINTERNAL FEATURE ID 7\n"
             "END ADD\nMASSPROP\nEND MASSPROP\n");
  const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part).value;
  ASSERT_EQ(creo::ProNoError, creo::ProInputFileRead(model, L"d:\\p.txt", creo::ProInputFileType::program));
  EXPECT_EQ("HOLE", record().features.front().name);
  EXPECT_EQ(1U, record().dimensions.size());
  EXPECT_EQ(0U, record().familyTable->items.list.size());
  EXPECT_EQ(1U, record().layers.front().items.size());
}

TEST_F(Program, ConditionsSuppressFeaturesAndATextThatDoesntFitIsRefused) {
  own_->start();
  const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part).value;
  const creo::ProFeature hole{model, 7};
  const auto a = creo::ProParameterInit(creo::ProMdlToModelitem(model).value, L"A");
  EXPECT_EQ(creo::ProNoError, creo::ProSolidRegenerate(model, 0));
  EXPECT_EQ(creo::ProFeatureStatus::active, creo::ProFeatureStatusGet(hole).value);
  const auto relations = creo::ProModelitemToRelset(creo::ProMdlToModelitem(model).value);
  ASSERT_EQ(creo::ProNoError, creo::ProRelsetRelationsSet(relations.value, {L"A = 0.5"}));
  EXPECT_EQ(creo::ProNoError, creo::ProSolidRegenerate(model, 0));
  EXPECT_EQ(0.5, creo::ProParameterValueGet(a.value).value.real);
  EXPECT_EQ(creo::ProFeatureStatus::programSuppressed, creo::ProFeatureStatusGet(hole).value);

  const std::wstring path = core::pluginState().tempPath + L"taken.pls";
  const auto take = [&](const std::string& relation, const std::string& id) {
    EXPECT_FALSE(os::files().write(path, "VERSION 1\nINPUT\nEND INPUT\nRELATIONS\n" + relation +
                                             "\nEND RELATIONS\nADD FEATURE\nINTERNAL FEATURE ID 1\nEND ADD\n"
                                             "ADD FEATURE\nINTERNAL FEATURE ID " +
                                             id + "\nEND ADD\nMASSPROP\nEND MASSPROP\n"));
    EXPECT_EQ(creo::ProGeneralError, creo::ProInputFileRead(model, path, creo::ProInputFileType::program));
    return own_->session().messages().back();
  };
  EXPECT_THAT(take("A = 1", "99"), testing::HasSubstr(L":11: the model has no feature 99"));
  EXPECT_THAT(take("A = 1", "1"), testing::HasSubstr(L":11: the feature 1 is there twice"));
  EXPECT_THAT(take("IF A > 1", "7"), testing::HasSubstr(L":5: IF without ENDIF"));
}

TEST_F(Program, WhatCantBeWrittenOrTakenBackChangesNothing) {
  const std::string before = program();
  EXPECT_THAT(go(task("deleteModelProProgramLines", "startline='INPUT' endline='" + givenUpButOn("END INPUT") +
                                                        "' endif='false' excl_start_end='false'")),
              testing::HasSubstr(L"E:The program stays as it is, as a pattern was given up"));
  EXPECT_EQ(before, program());
  EXPECT_THAT(go(task("deleteModelProProgramLines", "delline='END IF' endif='false' excl_start_end='false'")),
              testing::HasSubstr(L"E:Failure while reading the Pro/PROGRAM file"));
  EXPECT_THAT(own_->session().messages().back(), testing::HasSubstr(L":15: IF without END IF"));
  EXPECT_EQ(before, program());
  for (const char* operation : {"ProOutputFileWrite", "ProInputFileRead"}) {
    EXPECT_THAT(
        go(task("deleteModelProProgramLines", "delline='A NUMBER' endif='false' excl_start_end='false'"), operation),
        testing::HasSubstr(L"E:Failure while "))
        << operation;
    EXPECT_EQ(before, program());
    EXPECT_TRUE(filesAreGone());
  }
}

}  // namespace
}  // namespace test
