// `kelvane run`: what a run does to a folder of models.
#include "kelvane/run/run_fixture.h"

namespace test {
namespace {

using creo::ProMdlType;
namespace fs = std::filesystem;

class Run : public RunFixture {};

TEST_F(Run, ExampleLeavesOneNewVersionWithItsHistory) {
  workspace();
  const std::vector<std::string> before = filesIn("models");
  const Ended first = runExample("title_block");
  EXPECT_EQ(0, first.code) << first.err;
  EXPECT_EQ("done  models=21 changed=20 unchanged=0 skipped=1 failed=0 saved=20  errors=0 warnings=7", recapOf(first));
  EXPECT_THAT(first.out, testing::HasSubstr("log  " + models() + "/kelvane.log\n"));
  EXPECT_EQ(before.size() + 20 + 1, filesIn("models").size());
  const std::string gear = kelvane({"show", models(), "GEAR.PRT"}).out;
  EXPECT_THAT(gear, testing::ContainsRegex("STANDARD +String +WN-100"));
  EXPECT_THAT(gear, testing::ContainsRegex("history\n  .* standards.kvz +title_block.xml"));

  // The history is in the saved documents, so that a second run finds only what it couldn't touch.
  const Ended second = runExample("title_block");
  EXPECT_EQ("done  models=21 changed=0 unchanged=0 skipped=21 failed=0 saved=0  errors=0 warnings=0", recapOf(second));
  EXPECT_THAT(second.err, testing::HasSubstr("warning: 20 models were worked by this list before"));
  const Ended again = runExample("title_block", {"--again"});
  EXPECT_EQ("done  models=21 changed=0 unchanged=20 skipped=1 failed=0 saved=20  errors=0 warnings=7", recapOf(again));
}

TEST_F(Run, DryRunNamesExactlyWhatTheRunThenDoes) {
  workspace();
  const std::vector<std::string> before = filesIn("models");
  const Ended dry = runExample("title_block", {"-n"});
  EXPECT_EQ(before, filesIn("models"));
  const Ended real = runExample("title_block");
  const Ended diff = kelvane({"diff", example("workspace"), models()});
  EXPECT_EQ(1, diff.code);
  EXPECT_EQ(diff.out, dry.out.substr(0, dry.out.find("dry  models=")));
  EXPECT_EQ(recapOf(real).substr(4), recapOf(dry).substr(3));
}

TEST_F(Run, TheCleanUpDoesWhatItsDryRunNamesAndThenRests) {
  workspace();
  const Ended dry = runExample("clean_up", {"-n"});
  const Ended real = runExample("clean_up");
  EXPECT_THAT(recapOf(real), testing::HasSubstr(" failed=0 saved=21  errors=0 "));
  const Ended diff = kelvane({"diff", example("workspace"), models()});
  EXPECT_EQ(diff.out, dry.out.substr(0, dry.out.find("dry  models=")));
  for (const char* change : {"HOUSING_LOWER.PRT: features/20/name: BORE_IN -> SEAT_IN", "SHAFT_IN.PRT: + units: mmNs"})
    EXPECT_THAT(diff.out, testing::HasSubstr(change));
  runExample("clean_up", {"--again"});
  EXPECT_EQ(diff.out, kelvane({"diff", example("workspace"), models()}).out);
}

// Of one name are a part, an assembly and a drawing.
TEST_F(Run, TheHandOverGivesEachModelFilesOfItsOwn) {
  kelvane({"new", models(), "X.PRT", "--box", "10,20,5"});
  file("models/x.asm.1", R"({"format": 1, "components": [{"name": "X", "type": "prt", "feature": 3}]})");
  kelvane({"new", models(), "X.DRW"});
  EXPECT_THAT(recapOf(runExample("hand_over")), testing::HasSubstr("models=3 changed=0 "));
  for (const char* made : {"X_prt.stp", "X_asm.stp", "X_prt.jpg", "X_asm.jpg", "X_drw.tiff", "X_prt_sheet.pdf",
                           "X_asm_sheet.pdf", "X_drw_sheet.pdf", "X_drw.pdf"})
    EXPECT_TRUE(fs::exists(models() + "/" + made)) << made;
  EXPECT_THAT(readBytes(models() + "/kelvane.log"), testing::Not(testing::HasSubstr("(ERR)")));
}

TEST_F(Run, ADryRunNamesMaterialsAsTheRunDoes) {
  file("standards/materials/TIN.mtl", "ND_MATERIAL TIN\nPTC_MASS_DENSITY = 7.3e-06 kg/mm^3\n");
  list("tin.xml",
       "<task type='replaceMaterial' version='3' forPRT='true' forEF='false' path='@project_dir@' namef_0='LEAD'"
       " namet_0='TIN' delreplaced='true'/>" +
           kSave);
  file("models/plate.prt.1", R"({"format": 1, "material": "LEAD", "materials": [{"name": "LEAD", "parameters": [
    {"name": "PTC_MASS_DENSITY", "type": "double", "value": 1.1e-05}]}]})");
  std::filesystem::copy(models(), path("before"));
  const Ended dry = run("tin", {"-n"});
  EXPECT_EQ(0, run("tin").code);
  const std::string diff = kelvane({"diff", path("before"), models()}).out;
  EXPECT_EQ(diff, dry.out.substr(0, dry.out.find("dry  models=")));
  EXPECT_EQ(
      "PLATE.PRT: material: LEAD -> TIN\nPLATE.PRT: + materials/TIN/name: TIN\n"
      "PLATE.PRT: + materials/TIN/parameters/PTC_MASS_DENSITY/name: PTC_MASS_DENSITY\n"
      "PLATE.PRT: + materials/TIN/parameters/PTC_MASS_DENSITY/type: double\n"
      "PLATE.PRT: + materials/TIN/parameters/PTC_MASS_DENSITY/value: 7.3e-06\n"
      "PLATE.PRT: + materials/TIN/parameters/PTC_MASS_DENSITY/units: kg/mm^3\n"
      "PLATE.PRT: - materials/LEAD/name: LEAD\n"
      "PLATE.PRT: - materials/LEAD/parameters/PTC_MASS_DENSITY/name: PTC_MASS_DENSITY\n"
      "PLATE.PRT: - materials/LEAD/parameters/PTC_MASS_DENSITY/type: double\n"
      "PLATE.PRT: - materials/LEAD/parameters/PTC_MASS_DENSITY/value: 1.1e-05\n",
      diff);
  run("tin", {"--again"});
  EXPECT_EQ("", kelvane({"diff", path("before"), models()}).out.substr(diff.size()));
}

TEST_F(Run, SaveOptionsSayWhatIsKept) {
  const std::string changed = "done  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1  errors=0 warnings=0";
  const std::string kept = "done  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=0  errors=0 warnings=0";
  struct Case {
    std::string list, save, recap;
    bool history;
  };
  const std::vector<Case> cases = {{"norm", "touched", changed, true},
                                   {"norm", "all", changed, true},
                                   {"norm", "none", changed, false},
                                   {"unsaved", "touched", kept, false},
                                   {"unsaved", "all", changed, true}};
  for (const Case& c : cases) {
    fs::remove_all(models());
    part(L"PLATE");
    EXPECT_EQ(c.recap, recapOf(run(c.list, {"--save", c.save, "--log", path("log")}))) << c.list << " " << c.save;
    EXPECT_EQ(c.recap == kept ? 1U : 2U, filesIn("models").size()) << c.list << " " << c.save;
    const std::string shown = kelvane({"show", models(), "PLATE.PRT"}).out;
    EXPECT_EQ(c.history, shown.find("history") != shown.npos) << c.list << " " << c.save;
  }
}

// An instance is kept in its generic's document, so that both want the same version.
TEST_F(Run, EachDocumentGetsOneVersionWithAllItsHistory) {
  const std::string set =
      "<task type='editModelParameter' version='3' forPRT='true' forEF='false' searchin='1'"
      " name='MASS' totype='0' value='7'/>";
  const std::string other =
      "<task type='groupActions' version='3' forPRT='false' forASM='true' forDRW='true' forEF='false' reworkMode='5'"
      " mdlname='GEN.PRT'><subtasks>" +
      set + kSave + "</subtasks></task>";
  list("twice.xml", kAddNorm + kSave + set + kSave + other);
  part(L"GEN").with(L"MASS", 2.5).column(L"MASS").instance(L"GEN_1", {"3.0"}).instance(L"GEN_2", {"4.0"});
  assembly(L"A").uses(L"GEN_1", ProMdlType::part);
  assembly(L"B").uses(L"GEN_2", ProMdlType::part);
  fs::copy(models(), path("before"));
  const std::vector<std::string> all = {"--set", "kvd_filter_inst=1"};
  const auto with = [&](std::vector<std::string> more) {
    more.insert(more.end(), all.begin(), all.end());
    return more;
  };
  const Ended dry = run("twice", with({"-n"}));
  const Ended real = run("twice", with({"--events", path("events")}));
  EXPECT_EQ(0, real.code) << real.err;
  EXPECT_EQ("done  models=5 changed=5 unchanged=0 skipped=0 failed=0 saved=3  errors=0 warnings=7", recapOf(real));
  EXPECT_EQ(
      (std::vector<std::string>{"A.asm.1", "A.asm.2", "B.asm.1", "B.asm.2", "GEN.prt.1", "GEN.prt.2", "kelvane.log"}),
      filesIn("models"));
  const Ended diff = kelvane({"diff", path("before"), models()});
  EXPECT_EQ(diff.out, dry.out.substr(0, dry.out.find("dry  models=")));
  const std::string events = readBytes(path("events"));
  for (const std::string& event : {diff.out, events}) EXPECT_EQ(std::string::npos, event.find("kvpslot")) << event;
  const std::string norm = R"("model":"GEN.PRT","path":"parameters/NORM/value","old":"","new":"WN-100"})";
  EXPECT_NE(std::string::npos, events.find(norm)) << events;
  EXPECT_EQ(events.find(norm), events.rfind(norm)) << "told once";
  EXPECT_THAT(recapOf(run("twice", all)), testing::HasSubstr("models=5 changed=0 unchanged=0 skipped=5 failed=0"));
}

TEST_F(Run, AVersionThatWasCopiedOrBackedUpStays) {
  const std::string of = " version='3' forPRT='true' forEF='false' ";
  fs::create_directories(path("models/backup"));
  for (const std::string& hands :
       {"<task type='backupAction'" + of + "path='d:/backup'/>", "<task type='copyModel'" + of + "name='COPY'/>"}) {
    part(L"PLATE").with(L"MASS", 2.5);
    list("hands.xml", kAddNorm + kSave + hands);
    const Ended ended = run("hands", {"--start", "PLATE.PRT"});
    EXPECT_EQ(0, ended.code) << ended.err;
    EXPECT_THAT(readBytes(path("models/PLATE.prt.2")), testing::Not(testing::HasSubstr("ListName")));
    const bool isBackup = hands.find("backup") != std::string::npos;
    // Behind a backup the model is saved there, and the run says so.
    EXPECT_THAT(readBytes(path(isBackup ? "models/backup/PLATE.prt.2" : "models/PLATE.prt.3")),
                testing::HasSubstr("ListName"));
    EXPECT_EQ(isBackup, ended.err.find("saved in backup") != std::string::npos) << ended.err;
    EXPECT_FALSE(fs::exists(path(isBackup ? "models/PLATE.prt.3" : "models/PLATE.prt.4")));
    for (const char* entry : {"models/PLATE.prt.2", "models/PLATE.prt.3"}) fs::remove(path(entry));
    fs::remove_all(path("models/kelvane.journal"));  // which never gives a number twice
  }
}

// Nobody writes into what a backup has put aside, and a new name is looked for where the saves go now.
TEST_F(Run, ARenameBehindABackupLeavesTheBackupAlone) {
  part(L"PLATE");
  assembly(L"TOP").uses(L"PLATE", ProMdlType::part);
  fs::create_directories(path("models/backup"));
  for (const char* entry : {"models/backup/TOP.asm.1", "models/backup/WHEEL.prt.7"}) file(entry, R"({"format": 1})");
  const std::string kinds = " version='3' forPRT='true' forASM='true' forEF='false' ";
  const auto onTop = [&kinds](const std::string& tasks) {
    return "<task type='groupActions'" + kinds + "reworkMode='5' mdlname='TOP.ASM'><subtasks>" + tasks +
           "</subtasks></task>";
  };
  const auto rename = [&kinds](const std::string& name) {
    return "<task type='renameModel'" + kinds + "name='" + name + "'/>";
  };
  list("rename.xml", onTop("<task type='backupAction'" + kinds + "path='d:/backup'/>") + rename("wheel") +
                         rename("axle") + onTop(kSave) + kSave);
  const Ended ended = run("rename", {"--start", "PLATE.PRT"});
  EXPECT_THAT(ended.err, testing::HasSubstr("Another model has the name WHEEL"));
  EXPECT_EQ(
      (std::vector<std::string>{"PLATE.prt.1", "TOP.asm.1", "TOP.asm.2", "TOP.asm.3", "WHEEL.prt.7", "axle.prt.1"}),
      filesIn("models/backup"));
  EXPECT_THAT(readBytes(path("models/backup/TOP.asm.2")), testing::HasSubstr("PLATE"));
  EXPECT_THAT(readBytes(path("models/backup/TOP.asm.3")), testing::HasSubstr("AXLE"));
}

TEST_F(Run, WhatChangesBelowIsSavedOrNamed) {
  // A drawing's list changes the drawing's model, which the table doesn't show.
  const auto onModel = [](const std::string& tasks, const std::string& attributes = "mdlname='PLATE.PRT'") {
    return "<task type='groupActions' version='3' forDRW='true' forEF='false' reworkMode='5' " + attributes +
           "><subtasks>" + tasks + "</subtasks></task>";
  };
  const struct {
    const char* name;
    std::string tasks;
    const char* said;  // on standard error
  } lists[] = {
      {"below", onModel(kAddNorm) + kSave, ""},
      {"left", onModel(kAddNorm), "warning: changed, but not saved: PLATE.PRT\n"},
      {"nothing", onModel(""), ""},
      {"erased", onModel(kAddNorm, "mdlname='LID.PRT' removeFromSession='1'"),
       "warning: changed, but not saved: LID.PRT\n"},
  };
  for (const auto& c : lists) {
    fs::remove_all(models());
    part(L"PLATE").with(L"MASS", 2.5);
    part(L"LID").with(L"MASS", 2.5);
    ModelBuilder(models(), L"PLATE", ProMdlType::drawing).uses(L"PLATE", ProMdlType::part);
    list(std::string(c.name) + ".xml", c.tasks);
    const Ended dry = run(c.name, {"--select", "*.DRW", "-n"});
    const Ended ended = run(c.name, {"--select", "*.DRW", "--events", path("events")});
    const bool saves = std::string(c.name) == "below";
    for (const Ended* entry : {&dry, &ended}) {
      EXPECT_EQ(0, entry->code) << entry->err;
      EXPECT_EQ(*c.said != 0, entry->err.find("not saved") != std::string::npos) << entry->err;
      EXPECT_NE(std::string::npos, entry->err.find(c.said)) << entry->err;
      EXPECT_NE(std::string::npos, entry->out.find(saves ? " saved=2 " : " saved=0 ")) << c.name << entry->out;
    }
    EXPECT_EQ(saves, dry.out.find("PLATE.PRT: + parameters/NORM/value: WN-100") != std::string::npos) << dry.out;
    EXPECT_EQ(saves, fs::exists(models() + "/PLATE.prt.2")) << c.name;
    EXPECT_EQ(*c.said != 0, readBytes(path("events")).find("{\"event\":\"unsaved\",\"model\":\"") != std::string::npos);
  }
}

TEST_F(Run, RowsAreChosenByPatternNumberAndStart) {
  struct Case {
    std::vector<std::string> options;
    std::string worked;
  };
  const std::vector<Case> cases = {
      {{}, "A1.PRT A2.PRT B1.PRT TOP.ASM"},
      {{"--select", "a*"}, "A1.PRT A2.PRT"},
      {{"--select", "/1\\.PRT$/"}, "A1.PRT B1.PRT"},
      {{"--limit", "2"}, "A1.PRT A2.PRT"},
      {{"--select", "*.asm", "--limit", "2"}, "TOP.ASM"},
      {{"--start", "b1.prt"}, "B1.PRT"},
      {{"--start", "B1.PRT", "--start", "A2.PRT"}, "A2.PRT B1.PRT"},
      {{"--set", "kvd_filter_asm=0"}, "A1.PRT A2.PRT B1.PRT"},
      {{"--select", "none"}, ""},
  };
  for (const Case& c : cases) {
    fs::remove_all(models());
    part(L"A1");
    part(L"A2");
    part(L"B1");
    assembly(L"TOP").uses(L"A1", ProMdlType::part).uses(L"A2", ProMdlType::part);
    const Ended ended = run("norm", c.options);
    EXPECT_EQ(0, ended.code) << ended.err;
    EXPECT_EQ(c.worked, workedOf(ended)) << testing::PrintToString(c.options) << ended.err;
    if (c.worked.empty())
      EXPECT_EQ("warning: --select: no model matches 'none'\nno model is left to work\n", ended.err);
  }
}

TEST_F(Run, AModelAloneComesBeforeThePerson) {
  part(L"A1");
  part(L"A2");
  assembly(L"TOP").uses(L"A1", ProMdlType::part).uses(L"A2", ProMdlType::part);
  EXPECT_EQ("A2.PRT", workedOf(run("norm", {"--select", "A2*"})));
  EXPECT_THAT(readBytes(models() + "/kelvane.log"), testing::HasSubstr("Run Body actions for A2.PRT"));
}

// What the choosers pass on their way to the wanted list, and what the site has for people at Creo.
TEST_F(Run, AnotherListsFilterAndTheTriggersActOnNothing) {
  file("standards/actionlists/aaa.xml",
       R"(<list><head/><body/><filter><root><f type="isregenerateable" filtertype="true"/>)"
       R"(<f type="hammer" filtertype="true"/></root></filter><foot/></list>)");
  list("rename.xml", "<task type='renameModel' version='3' forPRT='true' forEF='false' name='TRIGGERED'/>");
  part(L"PLATE");
  part(L"BOLT");
  const Ended ended =
      run("norm", {"--set", "kvd_start_kvz_after_open=standards rename", "--set",
                   "kvd_start_kvz_after_occupy=standards rename", "--events", path("events"), "--operations"});
  EXPECT_EQ(0, ended.code) << ended.err;
  EXPECT_EQ("done  models=2 changed=2 unchanged=0 skipped=0 failed=0 saved=2  errors=0 warnings=0", recapOf(ended));
  EXPECT_THAT(readBytes(path("events")), testing::Not(testing::HasSubstr("\"ProSolidRegenerate\"")));
  EXPECT_EQ((std::vector<std::string>{"BOLT.prt.1", "BOLT.prt.2", "PLATE.prt.1", "PLATE.prt.2", "kelvane.log"}),
            filesIn("models"));
  EXPECT_EQ(0, kelvane({"why", path("standards"), "unsaved", models(), "PLATE.PRT"}).code);
  for (const std::string none : {"0", "1"}) {
    const Ended again = run("norm", {"--again", "-n", "--set", "kvd_no_pro_notifications=" + none});
    EXPECT_THAT(recapOf(again), testing::HasSubstr("models=2 ")) << none;
  }
}

TEST_F(Run, ARenamedModelKeepsItsRowAndItsRecord) {
  const std::string rename = "<task type='renameModel' version='3' forPRT='true' forEF='false' name='@mdln@_X'/>";
  const std::string add =
      "<task type='addModelParameter' version='3' forPRT='true' forEF='false' count='1' name_0='NORM' type_0='String'"
      " value_0='WN-100'/><task type='saveModel' version='3' forPRT='true' forEF='false'/>";
  for (const std::string& tasks : {rename, add + rename, rename + add}) {
    fs::remove_all(models());
    file("models/plate.prt.2", R"({"format": 1, "parameters": [{"name": "A", "type": "integer", "value": 2}]})");
    file("models/plate.prt.1", R"({"format": 1, "parameters": [{"name": "A", "type": "integer", "value": 1}]})");
    assembly(L"TOP").uses(L"PLATE", ProMdlType::part);
    list("rename.xml", tasks);
    const std::vector<std::string> before = filesIn("models");
    const Ended dry = run("rename", {"-n"});
    EXPECT_THAT(dry.out, testing::StartsWith("PLATE.PRT: renamed to PLATE_X.PRT\n")) << tasks;
    EXPECT_THAT(dry.out, testing::ContainsRegex("TOP.ASM: [^\n]*PLATE_X\n")) << tasks;
    EXPECT_EQ(before, filesIn("models"));
    const Ended real = run("rename", {"--events", path("events")});
    EXPECT_EQ(0, real.code) << tasks << real.err;
    EXPECT_EQ(recapOf(dry).substr(3), recapOf(real).substr(4));
    EXPECT_THAT(recapOf(real),
                testing::StartsWith("done  models=2 changed=2 unchanged=0 skipped=0 failed=0 saved=2  errors=0 "));
    EXPECT_THAT(real.err, testing::HasSubstr("] PLATE.PRT  renamed\n"));
    EXPECT_THAT(real.out, testing::Not(testing::HasSubstr("files  "))) << "they are models";
    EXPECT_THAT(readBytes(path("events")),
                testing::HasSubstr(R"({"event":"renamed","model":"PLATE.PRT","to":"PLATE_X.PRT"})"));
    EXPECT_EQ((std::vector<std::string>{"TOP.asm.1", "TOP.asm.2", "kelvane.log", "plate_x.prt.1", "plate_x.prt.2",
                                        "plate_x.prt.3"}),
              filesIn("models"))
        << tasks;
    EXPECT_EQ(tasks != rename,
              kelvane({"models", models(), "--param", "NORM"}).out.find("WN-100") != std::string::npos);
    // Its record is found, so that it isn't renamed once more.
    EXPECT_EQ("done  models=2 changed=0 unchanged=0 skipped=2 failed=0 saved=0  errors=0 warnings=0",
              recapOf(run("rename")))
        << tasks;
  }
}

// By a group of a row that comes before it.
TEST_F(Run, ARowWhoseModelWasRenamedBeforeItsTurnIsWorkedUnderItsNewName) {
  assembly(L"TOP");
  file("models/sheet.drw.1", R"({"format": 1, "models": [{"name": "TOP", "type": "asm"}]})");
  const std::string group =
      "<task type='groupActions' version='3' forPRT='false' forASM='true' forDRW='false' forEF='false' reworkMode='5'"
      " mdlname='SHEET.DRW'><subtasks><task type='renameModel' version='3' forDRW='true' forEF='false'"
      " name='PLAN'/></subtasks></task>";
  list("rename.xml", group + kAddNorm + kSave);
  for (const std::string mode : {"-n", "--again"}) {
    const Ended ended = run("rename", {mode});
    EXPECT_EQ(0, ended.code) << ended.out << ended.err;
    EXPECT_THAT(ended.err, testing::HasSubstr("] SHEET.DRW  renamed\n"));
    EXPECT_THAT(recapOf(ended),
                testing::HasSubstr("models=2 changed=2 unchanged=0 skipped=0 failed=0 saved=2  errors=0"));
  }
  EXPECT_THAT(readBytes(path("models/plan.drw.2")), testing::HasSubstr("\"WN-100\""));
  EXPECT_THAT(recapOf(run("rename")), testing::HasSubstr("models=2 changed=0 unchanged=0 skipped=2 failed=0"));
}

TEST_F(Run, InstancesOfARenamedModelKeepTheirNames) {
  file("models/gen.prt.1", R"({"format": 1, "familyTable": {"items": [], "instances": [{"name": "GEN_1"}]}})");
  assembly(L"TOP").uses(L"GEN_1", ProMdlType::part);
  list("rename.xml", "<task type='renameModel' version='3' forPRT='true' forEF='false' name='@mdln@_X'/>");
  const Ended ended = run("rename", {"--set", "kvd_filter_inst=1"});
  EXPECT_EQ(0, ended.code) << ended.out;
  EXPECT_THAT(ended.err, testing::HasSubstr("] GEN.PRT  renamed\n"));
  EXPECT_THAT(ended.err, testing::HasSubstr("] GEN_1.PRT  changed\n"));
}

TEST_F(Run, FilterFileOfThePackageDecides) {
  workspace();
  EXPECT_EQ("BOLT_DIN933.PRT", workedOf(runExample("inventory", {"--filter", "fasteners", "-n"})));
}

TEST_F(Run, EventsTellChangesLogAndRecap) {
  part(L"PLATE").with(L"MASS", 2.5);
  run("norm", {"--events", path("events"), "--operations"});
  const std::string events = readBytes(path("events"));
  for (const char* piece :
       {"{\"event\":\"changed\",\"model\":\"PLATE.PRT\",\"path\":\"parameters/NORM/"
        "value\",\"old\":\"\",\"new\":\"WN-100\"}\n"
        "{\"event\":\"model\",\"model\":\"PLATE.PRT\",\"outcome\":\"changed\",\"errors\":0}\n",
        "{\"event\":\"log\",\"level\":9,", "{\"event\":\"operation\",\"name\":\"ProMdlSave\",\"result\":0,",
        "{\"event\":\"recap\",\"models\":1,\"changed\":1,"}) {
    EXPECT_NE(std::string::npos, events.find(piece)) << piece;
  }
}

TEST_F(Run, CopiesAndCollectedFilesLeaveTheFolderAlone) {
  part(L"PLATE").with(L"MASS", 2.5);
  file("models/PLATE.prt.0", "an old one");
  const std::vector<std::string> before = filesIn("models");
  EXPECT_EQ(0, run("norm", {"--into", path("copy"), "--collect", path("out")}).code);
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1", "PLATE.prt.2", "kelvane.log"}), filesIn("copy"));
  EXPECT_EQ(std::vector<std::string>{"PLATE.prt.2"}, filesIn("out"));
  EXPECT_EQ(readBytes(path("copy/PLATE.prt.2")), readBytes(path("out/PLATE.prt.2")));
  EXPECT_EQ("kelvane: --into: " + path("copy") + " is there already\n", run("norm", {"--into", path("copy")}).err);
  EXPECT_EQ("done  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=0  errors=0 warnings=0",
            recapOf(run("norm", {"--read-only", "--log", path("log")})));
  EXPECT_EQ(before, filesIn("models"));
}

TEST_F(Run, ConfigurationOfTheSiteCountsAndSetWins) {
  part(L"PLATE");
  file("config/kvd_main.cfg", "kvd_write_history_in_models=0\nkvd_show_no_debug_in_log=0");
  run("norm", {"--config", path("config"), "--set", "kvd_show_no_debug_in_log=1"});
  EXPECT_THAT(kelvane({"show", models(), "PLATE.PRT"}).out, testing::Not(testing::HasSubstr("history")));
  EXPECT_THAT(readBytes(models() + "/kelvane.log"), testing::Not(testing::HasSubstr("(DBG)")));
}

// Each file is in an encoding of its own, and lines that only look like keys are told.
TEST_F(Run, ConfigurationIsDecodedFileByFileAndItsSlipsAreNamed) {
  part(L"PLATE");
  std::string utf16 = "\xFF\xFE";
  for (const char c : std::string("kvd_write_history_in_models=0\nkvd_log_levl=8\n"))
    utf16.append(1, c).append(1, '\0');
  file("utf16/kvd_main.cfg", utf16);
  const Ended ended = run("norm", {"--config", path("utf16")});
  EXPECT_THAT(kelvane({"show", models(), "PLATE.PRT"}).out, testing::Not(testing::HasSubstr("history")));
  const std::string slip = path("utf16/kvd_main.cfg") +
                           ":2: there is no key 'kvd_log_levl'; did you mean "
                           "'kvd_log_level'?\n";
  EXPECT_THAT(ended.err, testing::StartsWith("warning: " + slip));
  EXPECT_EQ(0, ended.code);
  file("remarks/kvd_main.cfg",
       "# kvd_log_level=8\nkvd_log_level is 0 here\nauthor=Max\nKVD_LANG=de\nprt=1\n kvd_lang=de\nkvd_lang: "
       "de\nkvd_our_own=1\nkvd_log_level=2\nLogLevel=5\n");
  const std::string place = path("remarks/kvd_main.cfg");
  EXPECT_THAT(kelvane({"check", path("standards"), "--config", path("remarks")}).out,
              testing::HasSubstr(place + ":6: blanks beside the key 'kvd_lang' are taken as a part of it\n" + place +
                                 ":7: the key 'kvd_lang' has no '=' behind it\n" + place +
                                 ":8: there is no key 'kvd_our_own'\n" + place +
                                 ":10: 'LogLevel': 5 is none of 0, 1, 2 and 8 and counts as 0\n"));
  EXPECT_THAT(kelvane({"check", path("standards"), "--config", path("remarks")}).out,
              testing::StartsWith(place + ":6"));
}

TEST_F(Run, OptionsOfCreoAreThoseOfTheSession) {
  part(L"PLATE");
  const std::string edit =
      "<task type=\"editModelParameter\" version=\"3\" forPRT=\"true\" forEF=\"false\" searchin=\"1\" name=\"NORM\" "
      "totype=\"0\" value=\"@pro_format_dir@\"/>";
  const std::string keep =
      "<task type='saveConfigOptions' version='3' forPRT='true' forEF='false' savename='s'><o name_0='search_path'/>"
      "</task><task type='setConfigOption' version='3' forPRT='true' forEF='false' safename='s'/>";
  list("format.xml", kAddNorm + edit + keep + kSave);
  EXPECT_EQ(0, run("format", {"--creo-option", "pro_format_dir=d:/a", "--creo-option", "PRO_FORMAT_DIR=d:/b=c",
                              "--creo-option", "search_path=d:/a", "--creo-option", "Search_Path=d:/b"})
                   .code);
  EXPECT_THAT(kelvane({"models", models(), "--param", "NORM"}).out, testing::HasSubstr("d:/b=c\\"));
  EXPECT_THAT(readBytes(models() + "/kelvane.log"),
              testing::AllOf(testing::HasSubstr("Set search_path to d:/b"),
                             testing::Not(testing::HasSubstr("Set search_path to d:/a"))));
}

TEST_F(Run, ChangedPackageIsUnpackedAnewAndAnUnchangedOneIsNot) {
  part(L"PLATE");
  run("norm", {"-n"});
  const fs::path unpacked = fs::directory_iterator(path("cache/kelvane"))->path() / "temp/open_kvz_standards";
  writeBytes(unpacked / "left.txt", "stays while nothing is unpacked");
  fs::last_write_time(path("standards/system/index.kvane"), fs::file_time_type::clock::now());
  run("norm", {"-n"});
  EXPECT_TRUE(fs::exists(unpacked / "left.txt"));
  list("norm.xml", kSave);
  EXPECT_EQ("dry  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=1  errors=0 warnings=0",
            recapOf(run("norm", {"-n"})));
  EXPECT_FALSE(fs::exists(unpacked / "left.txt"));
}

TEST_F(Run, PackagesInTurnAreUnpackedOnceAndTheCacheIsBounded) {
  part(L"PLATE");
  for (const char* name : {"a.KVZ", "v1..2.kvz"}) EXPECT_EQ(0, kelvane({"pack", path("standards"), path(name)}).code);
  EXPECT_EQ(0, runPackage(path("a.KVZ"), "norm", {"-n"}).code);
  const fs::path work = fs::directory_iterator(path("cache/kelvane"))->path();
  writeBytes(work / "temp/open_kvz_a/left.txt", "stays while nothing is unpacked");
  const Ended dots = runPackage(path("v1..2.kvz"), "norm", {"-n"});
  EXPECT_EQ(0, dots.code) << dots.err;
  EXPECT_EQ(0, runPackage(path("a.KVZ"), "norm", {"-n"}).code);
  EXPECT_TRUE(fs::exists(work / "temp/open_kvz_a/left.txt"));
  EXPECT_EQ((std::vector<std::string>{"a.kvz"}), filesIn(fs::relative(work, path("")).string() + "/packages"));

  const std::string stray = "0123456789abcde";
  for (const char digit : std::string("0123456789abcdef")) {
    file("cache/kelvane/" + stray + digit + "/models", path("gone"));
    file("cache/kelvane/f" + stray.substr(1) + digit + "/models", models());
    file("cache/kelvane/e" + stray.substr(1) + digit + "/models", models());
  }
  file("cache/kelvane/of/another", "program");
  EXPECT_EQ(0, runPackage(path("a.KVZ"), "norm", {"-n"}).code);
  const std::vector<std::string> left = filesIn("cache/kelvane");
  EXPECT_EQ(33U, left.size()) << "32, and what is none of them";
  EXPECT_TRUE(fs::exists(path("cache/kelvane/of/another")) && fs::exists(work / "packages/a.kvz"));
  EXPECT_FALSE(fs::exists(path("cache/kelvane/" + stray + "0")));
}

TEST_F(Run, HeadAndFootRunWithoutAModelWhereThatIsAsked) {
  const std::string tell =
      "<task type='runMSDOScommand' version='3' forPRT='true' forEF='false' cmd='echo' args='foot "
      "&gt;&gt;d:/told.txt'/>";
  list("ends.xml", kSave, tell);
  fs::create_directories(models());
  const std::string none = "no model is left to work; Head and Foot weren't run (--head-foot runs them)\n";
  EXPECT_THAT(run("ends").err, testing::HasSubstr(none)) << "an empty folder";
  EXPECT_EQ(0, run("ends", {"--head-foot"}).code);
  EXPECT_EQ("foot\n", readBytes(models() + "/told.txt"));
  part(L"PLATE");
  EXPECT_EQ(0, run("ends", {"--again"}).code);
  const Ended again = run("ends");
  EXPECT_EQ(0, again.code);
  EXPECT_THAT(again.err, testing::HasSubstr(none));
  EXPECT_EQ("foot\nfoot\n", readBytes(models() + "/told.txt"));
  const Ended ends = run("ends", {"--head-foot"});
  EXPECT_EQ(0, ends.code);
  EXPECT_EQ("done  models=1 changed=0 unchanged=0 skipped=1 failed=0 saved=0  errors=0 warnings=0", recapOf(ends));
  EXPECT_EQ("foot\nfoot\nfoot\n", readBytes(models() + "/told.txt"));
  EXPECT_THAT(run("norm", {"--select", "none*"}).err, testing::HasSubstr("no model is left to work\n"));
}

TEST_F(Run, WhatAnExportRenamesIsCollectedUnderItsLastName) {
  file("models/block.prt.1", R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [8, 4, 2]}]}})");
  list("tiff.xml",
       "<task type='exporttiff' version='3' forPRT='true' forEF='false' folderFromModel='true' exportname='@mdln@' "
       "printmode='2'/>");
  const Ended ended = run("tiff", {"--collect", path("out"), "--events", path("events")});
  EXPECT_EQ(0, ended.code) << ended.err;
  EXPECT_EQ(std::vector<std::string>{"BLOCK.tiff"}, filesIn("out"));
  EXPECT_THAT(readBytes(path("events")), testing::HasSubstr("/models/BLOCK.tiff\"}"));
}

// What the first model would have written is in the way of none behind it.
TEST_F(Run, ADryRunOfSheetsAndBackupsHasNoErrorsOfItsOwn) {
  part(L"PLATE");
  assembly(L"TOP").uses(L"PLATE", creo::ProMdlType::part);
  fs::create_directories(models() + "/backup");
  const std::string kinds = " version='3' forPRT='true' forASM='true' forEF='false' ";
  list("hand.xml", "<task type='writeInformationPDF'" + kinds +
                       "folder='d:/' file='@mdln@'/><task type='backupAction'" + kinds + "path='d:/backup'/>");
  const Ended dry = run("hand", {"-n"});
  EXPECT_EQ(0, dry.code) << dry.err;
  EXPECT_THAT(dry.out,
              testing::AllOf(testing::HasSubstr("/models/PLATE.pdf\n"), testing::HasSubstr("/TOP.pdf\n"),
                             testing::HasSubstr("/backup/PLATE.prt.1\n"), testing::HasSubstr("/backup/PLATE.prt.2\n"),
                             testing::Not(testing::HasSubstr("writetest"))));
  EXPECT_EQ(0, run("hand").code);
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1", "PLATE.prt.2", "TOP.asm.1"}), filesIn("models/backup"));
}

TEST_F(Run, ADryRunComparesWhatABackupMovesWithTheModelThatWasRead) {
  part(L"PLATE").with(L"MASS", 2.5);
  fs::create_directories(models() + "/backup");
  const std::string kinds = " version='3' forPRT='true' forEF='false' ";
  list("keep.xml", "<task type='backupAction'" + kinds + "path='d:/backup'/>" + kAddNorm + kSave);
  const Ended dry = run("keep", {"-n"});
  EXPECT_THAT(dry.out, testing::AllOf(testing::HasSubstr("PLATE.PRT: + parameters/NORM/value: WN-100\n"),
                                      testing::Not(testing::HasSubstr("MASS"))));
  EXPECT_THAT(dry.err, testing::HasSubstr("saved in backup"));
  const Ended real = run("keep");
  EXPECT_EQ(recapOf(dry).substr(3), recapOf(real).substr(4)) << "dry and done";
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1", "PLATE.prt.2"}), filesIn("models/backup"));
  EXPECT_FALSE(fs::exists(path("models/PLATE.prt.2")));
  // What the backup has isn't left unsaved.
  list("put.xml", kAddNorm + "<task type='backupAction'" + kinds + "path='d:/backup'/>");
  for (const Ended& put : {run("put", {"-n"}), run("put")})
    EXPECT_THAT(put.err, testing::Not(testing::HasSubstr("not saved"))) << put.err;
}

// A site's script comes with its configuration. A dry run converts too, as the values tell what would change.
TEST_F(Run, WorkbooksGoThroughTheScriptOfTheConfiguration) {
  part(L"PLATE").with(L"COLOR", L"red");
  list("values.xml",
       "<task type='editModelParameterFromFile' version='3' forPRT='true' forEF='false'"
       " path='z:" +
           path("values.xls") + "'/>" + kSave);
  file("values.xls", "model name;parameter name;value\nPLATE;COLOR;blue\n");
  file("config/kvd_main.cfg", "kvd_no_user_cfg=1\n");
  file("config/xls2csv.vbs", "#!/bin/sh\necho ran >>'" + path("ran") + "'\ncp \"$1\" \"$2\"\n");
  fs::permissions(path("config/xls2csv.vbs"), fs::perms::owner_all);
  const Ended dry = run("values", {"-n", "--config", path("config")});
  EXPECT_THAT(dry.out, testing::AllOf(testing::HasSubstr("PLATE.PRT: parameters/COLOR/value: red -> blue\n"),
                                      testing::Not(testing::HasSubstr("would run"))));
  EXPECT_EQ("dry  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1  errors=0 warnings=0", recapOf(dry));
  EXPECT_EQ("ran\n", readBytes(path("ran")));
  const Ended real = run("values", {"--config", path("config"), "--again"});
  EXPECT_EQ("done  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1  errors=0 warnings=0", recapOf(real));
  EXPECT_EQ("ran\nran\n", readBytes(path("ran")));
  EXPECT_THAT(kelvane({"show", models(), "PLATE.PRT"}).out, testing::ContainsRegex("COLOR +String +blue"));
}

TEST_F(Run, TerminalShowsABarAndColoursUnlessTheyAreRefused) {
  part(L"PLATE");
  std::ostringstream out, err;
  kelvane::program({"run", path("standards"), "norm", models(), "-n"}, out, err, {true, true});
  EXPECT_THAT(err.str(), testing::HasSubstr("\r\x1b[K[########################] 1/1  "));
  EXPECT_THAT(out.str(), testing::HasSubstr("\x1b[32mWN-100\x1b[0m\n"));
  os::setEnvironment(L"NO_COLOR", L"1");
  std::ostringstream plain;
  kelvane::program({"run", path("standards"), "norm", models(), "-n", "-q"}, plain, err, {true, true});
  os::setEnvironment(L"NO_COLOR", L"");
  EXPECT_THAT(plain.str(), testing::HasSubstr("PLATE.PRT: + parameters/NORM/value: WN-100\n"));
}

}  // namespace
}  // namespace test
