// The modes of groupActions that go to other models.
#include <filesystem>

#include "actions/action_fixture.h"
#include "actions/dispatch.h"
#include "core/xml.h"
#include "creo/ProMdl.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "text/encoding.h"

namespace test {
namespace {

using creo::ProMdlType;

const std::string kSay =
    "<task type='setUserVariableDirect' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' name='V' "
    "value='@mdln@.@mdltype@'/>";
const std::string kSave =
    "<task type='saveModel' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false'/>";

class GroupModes : public ActionTest {
 protected:
  // The table holds the model alone, not what it leads to.
  GroupModes() { world.config("kvd_filter_curmod=1\nkvd_filter_inst=1"); }
  static std::string group(const std::string& attributes, const std::string& tasks = kSay) {
    return task("groupActions", attributes, "<subtasks>" + tasks + "</subtasks>");
  }
  void document(const std::string& name, const std::string& json) const {
    writeBytes(world.models() + "/" + name, json);
  }

  // What the group did on a model: the values that kSay set, names of models and literal lines, joined by blanks; that
  // each title is there, too, is left to other tests.
  std::wstring ran(const std::string& tasks, const std::wstring& name, ProMdlType type) {
    std::wstring all = run(tasks, name, type);
    for (const wchar_t* title : {L"B0 GROUP ACTION|", L"B0 - G0 Set user variable direct|", L"B0 - G0 Save model|"})
      all = text::replaceAll(all, title, L"");
    return text::replaceAll(all, L"- G0 set V = ", L"> ");
  }
  // For the cases of one test: a new session, a new package.
  void begin() {
    world.endSession();
    std::filesystem::remove(world.packages() + "/standards.kvz");
  }
  static std::wstring current() {
    const auto model = creo::ProMdlCurrentGet();
    return model ? creo::ProMdlNameGet(model.value).value : L"none";
  }
  std::wstring inMemory() {
    std::vector<std::wstring> names;
    for (const auto& model : world.session().models().list()) names.push_back(model.name);
    std::sort(names.begin(), names.end());
    std::wstring all;
    for (const std::wstring& name : names) all += (all.empty() ? L"" : L" ") + name;
    return all;
  }
};

// BOLT has two rows, the first with a table of its own.
const char* const kFamily =
    R"({"format": 1, "familyTable": {"items": [], "instances": [
        {"name": "M8", "familyTable": {"items": [], "instances": [{"name": "M8_LONG"}, {"name": "M8_SHORT"}]}},
        {"name": "M10"}]}})";

TEST_F(GroupModes, InstancesAreWorkedAndLeaveMemory) {
  struct Case {
    std::string attributes;
    std::wstring model;
    ProMdlType type;
    std::wstring expected;
  };
  const std::vector<Case> cases = {
      {"", L"BOLT", ProMdlType::part, L"M8|> M8.prt|M10|> M10.prt"},
      {"recsel='true'", L"BOLT", ProMdlType::part,
       L"M8|M8_LONG|> M8_LONG.prt|M8_SHORT|> M8_SHORT.prt|> M8.prt|M10|> M10.prt"},
      {"recsel='yes'", L"SHEET", ProMdlType::drawing, L"M8|> M8.prt|M10|> M10.prt"},
      {"", L"PLAIN", ProMdlType::part, L"B0 GROUP ACTION"},
      {"", L"EMPTY", ProMdlType::drawing, L"W:The drawing has no current model"},
  };
  for (const Case& entry : cases) {
    begin();
    document("bolt.prt.1", kFamily);
    world.part(L"PLAIN");
    world.drawing(L"SHEET").uses(L"BOLT", ProMdlType::part);
    world.drawing(L"EMPTY");
    EXPECT_EQ(entry.expected, ran(group("reworkMode='1' " + entry.attributes), entry.model, entry.type));
    EXPECT_EQ(entry.model, current());
    for (const wchar_t* instance : {L"M8", L"M8_LONG", L"M10"})
      EXPECT_FALSE(creo::ProMdlInit(instance, ProMdlType::part)) << text::toUtf8(instance);
  }
}

TEST_F(GroupModes, AnInstanceThatCantBeBuiltIsPassedOver) {
  world.part(L"BOLT").with(L"LENGTH", 1.0).column(L"LENGTH").instance(L"BAD", {"\"x\""}).instance(L"GOOD", {"2.0"});
  EXPECT_EQ(L"BAD|E:Can't create Instance|GOOD|> GOOD.prt", ran(group("reworkMode='1'"), L"BOLT", ProMdlType::part));
}

TEST_F(GroupModes, AnInstanceThatAnOuterGroupWorksOnStays) {
  document("bolt.prt.1", kFamily);
  const std::string inner = group("reworkMode='1'");
  run(group("reworkMode='5' mdlname='BOLT.PRT'", inner) + kSave, L"M10", ProMdlType::part);
  EXPECT_EQ(L"M10", current());
  EXPECT_EQ(2, world.version("bolt.prt"));  // saved by its instance, behind the group
}

TEST_F(GroupModes, DependenciesAreWorkedOnceDeepestFirst) {
  world.assembly(L"TOP").uses(L"SUB", ProMdlType::assembly).uses(L"PIN", ProMdlType::part);
  world.assembly(L"SUB").uses(L"PIN", ProMdlType::part).uses(L"TOP", ProMdlType::assembly);
  world.part(L"PIN");
  EXPECT_EQ(
      L"SUB|PIN|PIN|> PIN.prt|TOP|already visited, no second visit|SUB|> SUB.asm|PIN|already visited, no second visit|"
      L"Clean up memory and reshow first model",
      ran(group("reworkMode='3' recsel='true'"), L"TOP", ProMdlType::assembly));
  EXPECT_EQ(L"TOP", current());
}

TEST_F(GroupModes, AChainOfAssembliesHasNoLimit) {
  constexpr int kLength = 1000;
  for (int i = 0; i < kLength; ++i)
    world.assembly(L"A" + std::to_wstring(i)).uses(L"A" + std::to_wstring(i + 1), ProMdlType::assembly);
  world.assembly(L"A" + std::to_wstring(kLength));
  run(group("reworkMode='3'", task("setUserVariableDirect", "name='CHAIN' inc='true' incno='1'")), L"A0",
      ProMdlType::assembly);
  EXPECT_EQ(std::to_wstring(kLength), *language::userVariables().find(L"CHAIN"));
}

class NewDrawing : public GroupModes {
 protected:
  void SetUp() override {
    world.part(L"GEAR").with(L"NO", L"4711");
    world.member("models/templates/a3.drw.2",
                 R"({"format": 1, "parameters": [{"name": "KIND", "type": "string", "value": "workshop"}],
                     "models": [{"name": "OTHER", "type": "prt"}], "sheets": [{"size": "A3", "format": "FRAME"}],
                     "tables": [{"id": 7, "columns": [10.0], "rows": [5.0],
                                 "cells": [{"row": 1, "column": 1, "lines": ["&NO"]}]}],
                     "symbolDefinitions": [{"id": 1, "name": "ROUGHNESS"}],
                     "symbols": [{"id": 2, "definition": "ROUGHNESS"}]})");
  }
  const std::string kAttributes = "reworkMode='2' drwName='%NO%_x' tmpName='A3' tmpPath='@project_dir@/templates'";
};

TEST_F(NewDrawing, HasWhatItsTemplateHasAndGoesAfterTheTasks) {
  const std::wstring before = L"d:\\";
  EXPECT_EQ(L"Created the Drawing|> 4711_X.drw|B0 - G1 Save model|Erased the Drawing",
            ran(group(kAttributes, kSay + kSave), L"GEAR", ProMdlType::part));
  EXPECT_EQ(before, creo::ProDirectoryCurrentGet().value);
  EXPECT_EQ(L"GEAR", current());
  EXPECT_EQ(L"GEAR", inMemory());
  EXPECT_EQ(1, world.version("4711_X.drw"));
  EXPECT_EQ(L"KIND=workshop", world.savedParameters("4711_X.drw"));
  const std::string document = world.document("4711_X.drw");
  for (const char* piece : {"\"FRAME\"", "\"&NO\"", "\"ROUGHNESS\"", "\"GEAR\""})
    EXPECT_NE(document.npos, document.find(piece)) << piece << document;
  EXPECT_EQ(document.npos, document.find("OTHER"));
}

TEST_F(NewDrawing, IsMadeAnewUnlessItWasSaved) {
  EXPECT_EQ(
      L"Created the Drawing|> 4711_X.drw|Erased the Drawing|"
      L"B1 GROUP ACTION|Created the Drawing|B1 - G0 Set user variable direct|> 4711_X.drw|B1 - G1 Save model|"
      L"Erased the Drawing|B2 GROUP ACTION|E:Can't create the Drawing",
      ran(group(kAttributes, kSay) + group(kAttributes, kSay + kSave) + group(kAttributes, kSay), L"GEAR",
          ProMdlType::part));
  EXPECT_EQ(1, world.version("4711_X.drw"));
  EXPECT_EQ(L"GEAR", inMemory());
}

TEST_F(NewDrawing, ThatCantBeMadeIsOneErrorAndChangesNothing) {
  const std::pair<std::string, std::wstring> cases[] = {
      {"drwName='D' tmpName='NONE' tmpPath='@project_dir@/templates'", L""},
      {"drwName='D' tmpName='A3' tmpPath='@project_dir@/nowhere'", L""},
      {"drwName='..\\D' tmpName='A3' tmpPath='@project_dir@/templates'", L""},
      {"drwName='LOWER PLATE' tmpName='A3' tmpPath='@project_dir@/templates'", L""},
      {"drwName='%NONE%' tmpName='A3' tmpPath=''", L"E:Can't find parameter: NONE|"},
      {"drwName='ABCDEFGHIJKLMNOPQRSTUVWXYZABCDEF' tmpName='A3' tmpPath=''",
       L"E:The replaced output is to large for this task|"},
      {"", L""},
  };
  for (const auto& [attributes, line] : cases) {
    begin();
    EXPECT_EQ(line + L"E:Can't create the Drawing",
              ran(group("reworkMode='2' " + attributes), L"GEAR", ProMdlType::part))
        << attributes;
    EXPECT_EQ(L"d:\\", creo::ProDirectoryCurrentGet().value);
    EXPECT_EQ(L"GEAR", inMemory());
  }
}

TEST_F(NewDrawing, TakesNoNameThatADrawingHasInMemoryOrOnDisk) {
  world.config("kvd_write_history_in_models=0");
  world.drawing(L"4711_x").uses(L"GEAR", ProMdlType::part);
  const std::string before = world.document("4711_X.drw");
  EXPECT_EQ(L"E:Can't create the Drawing", ran(group(kAttributes, kSay + kSave), L"GEAR", ProMdlType::part));
  EXPECT_EQ(L"GEAR", inMemory());
  EXPECT_EQ(before, world.document("4711_X.drw"));
  EXPECT_EQ(1, world.version("4711_X.drw"));
  world.open(L"4711_X", ProMdlType::drawing);
  EXPECT_TRUE(std::filesystem::remove(world.models() + "/4711_x.drw.1"));
  world.open(L"GEAR", ProMdlType::part);
  world.run("list.xml");
  EXPECT_EQ(L"B0 GROUP ACTION|E:Can't create the Drawing", told(world.log())) << "in memory alone";
}

TEST_F(GroupModes, OtherModelsAreLoadedAndLeft) {
  struct Case {
    std::string attributes;
    std::wstring expected, memory;
  };
  const std::vector<Case> cases = {
      {"mdlname='top.asm'", L"> TOP.asm", L"BRACKET PIN TOP"},
      {"mdlname='TOP.ASM' removeFromSession='1'", L"> TOP.asm", L"BRACKET PIN"},
      {"mdlname='TOP.Asm' removeFromSession='2'", L"> TOP.asm", L"BRACKET"},
      {"mdlname='%PARTNER%.prt' removeFromSession='1'", L"> PIN.prt", L"BRACKET"},
      {"mdlname='@mdln@.prt' removeFromSession='2'", L"> BRACKET.prt|Can't erase the model and all dependencies",
       L"BRACKET"},
      {"mdlname='SHOWN.DRW' removeFromSession='2'", L"> SHOWN.drw", L"BRACKET"},
      {"mdlname='NONE.PRT'", L"E:Can't load model", L"BRACKET"},
      {"mdlname='PIN'", L"E:Model type not supported", L"BRACKET"},
      {"", L"E:Model type not supported", L"BRACKET"},
      {"mdlname='d:\\in\\plate.stp'", L"E:|E:Can't load model|E:The file that isn't imported: d:\\in\\plate.stp",
       L"BRACKET"},  // "-4"
  };
  for (const Case& entry : cases) {
    begin();
    world.part(L"BRACKET").with(L"PARTNER", L"PIN");
    world.part(L"PIN");
    world.assembly(L"TOP").uses(L"PIN", ProMdlType::part).uses(L"BRACKET", ProMdlType::part);
    world.drawing(L"SHOWN").uses(L"BRACKET", ProMdlType::part);
    EXPECT_EQ(entry.expected, ran(group("reworkMode='5' " + entry.attributes), L"BRACKET", ProMdlType::part));
    EXPECT_EQ(L"BRACKET", current());
    EXPECT_EQ(entry.memory, inMemory()) << entry.attributes;
  }
}

TEST_F(GroupModes, WhatOthersUseIsntErasedWithAModel) {
  world.part(L"BRACKET");
  world.assembly(L"ONE").uses(L"PIN", ProMdlType::part).uses(L"OWN", ProMdlType::part);
  world.assembly(L"TWO").uses(L"PIN", ProMdlType::part);
  world.part(L"PIN");
  world.part(L"OWN");
  run(group("reworkMode='5' mdlname='TWO.ASM'") + group("reworkMode='5' mdlname='ONE.ASM' removeFromSession='2'"));
  EXPECT_EQ(L"BRACKET PIN TWO", inMemory());
}

// The model is there still when the next group wants it, and goes with control.
TEST_F(GroupModes, OneModelIsErasedByGroupsInARow) {
  world.part(L"BRACKET");
  world.part(L"PIN");
  const std::string pin = group("reworkMode='5' mdlname='PIN.PRT' removeFromSession='1'", kSave);
  EXPECT_EQ(std::wstring::npos, run(pin + pin).find(L"Can't"));
  EXPECT_EQ(3, world.version("PIN.prt"));
  EXPECT_EQ(L"BRACKET", inMemory());
}

TEST_F(GroupModes, RepresentationsAreActiveForTheTasks) {
  document("top.asm.1", R"({"format": 1, "simplifiedReps": [{"id": 1, "name": "LIGHT"}]})");
  document("lone.prt.1", R"({"format": 1, "simplifiedReps": [{"id": 1, "name": "LIGHT"}]})");
  struct Case {
    std::string rep;
    std::wstring expected;
  };
  for (const Case& entry :
       {Case{"light", L"> TOP.asm"}, Case{"Master Rep", L"> TOP.asm"}, Case{"HEAVY", L"E:Simp rep not found : -4"}}) {
    begin();
    EXPECT_EQ(entry.expected,
              ran(group("reworkMode='7' simprepname='" + entry.rep + "'"), L"TOP", ProMdlType::assembly));
    EXPECT_EQ(L"TOP", current());
    const auto model = world.session().models().find(creo::ProMdlInit(L"TOP", ProMdlType::assembly).value);
    EXPECT_EQ("", model->document->activeRep);
  }
  // A part in memory stays in the master, which is the higher one.
  begin();
  EXPECT_EQ(L"W:The tasks don't work on the representation LIGHT: a higher one of the model is in memory|> LONE.prt",
            ran(group("reworkMode='7' simprepname='LIGHT'"), L"LONE", ProMdlType::part));
}

TEST_F(GroupModes, WithoutAModelOnlyWhatNeedsNoneRuns) {
  world.part(L"BRACKET");
  world.list("list.xml", task("clearAllWindows"));
  world.start();
  creo::ProMdlRetrieve(L"BRACKET", ProMdlType::part);
  actions::Subject nothing;
  for (const char* mode : {"3", "5"}) {
    std::string xml = group(std::string("mdlname='BRACKET.PRT' reworkMode='") + mode + "'");
    std::replace(xml.begin(), xml.end(), '\'', '"');
    const auto loaded = core::xmlParse(text::fromUtf8(xml));
    actions::dispatchAction(*core::xmlChildAt(loaded.value->root()->children, 0), nothing);
    EXPECT_EQ(std::string(mode) == "5", language::userVariables().find(L"V") != nullptr);
  }
}

}  // namespace
}  // namespace test
