// Actions on what a run works in: Creo's options, programs, the environment, the session's memory, insert positions,
// settings of drawings.
#include <algorithm>
#include <filesystem>

#include "actions/action_fixture.h"
#include "actions/saved_options.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"
#include "headless/model/retrieve.h"
#include "headless/proui/ui.h"
#include "headless/session/options.h"
#include "headless/session/windows.h"
#include "os/doors.h"
#include "support/drawings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace test {
namespace {

class Surroundings : public ActionTest {
 protected:
  Surroundings() { world.config("kvd_filter_curmod=1\nkvd_filter_inst=1"); }
  void SetUp() override { world.part(L"BRACKET").with(L"COLOR", L"red"); }

  // Children as the option actions list them: "<o name_0='a' value_0='b'/>" for each.
  static std::string options(const std::vector<std::pair<std::string, std::string>>& all) {
    std::string children;
    int number = 0;
    for (const auto& [name, value] : all) {
      const std::string i = std::to_string(number++);
      children += "<o name_" + i + "='" + name + "'" + (value.empty() ? "" : " value_" + i + "='" + value + "'") + "/>";
    }
    return children;
  }
  // "a,b"
  static std::wstring option(const std::wstring& name) {
    return text::join(creo::ProConfigoptArrayGet(name).value, L",");
  }
  static os::RecordedProcesses& programs() { return dynamic_cast<os::RecordedProcesses&>(os::processes()); }
};

TEST_F(Surroundings, OptionsAreSavedSetAndPutBack) {
  const std::string save = task("saveConfigOptions", "savename='s'", options({{"search_path", ""}, {"units", ""}}));
  const auto set = [](const std::string& name, const std::string& value) {
    return task("setConfigOption", "", options({{name, value}}));
  };
  world.list("list.xml", set("units", "inch") + save + set("Units", "mm") + save + set("UNITS", "m") +
                             set("search_path", "d:/%COLOR%") +
                             task("setConfigOption", "safename='s'", options({{"format", "a4"}})) +
                             task("setConfigOption", "safename='S'") +
                             task("saveConfigOptions", "", options({{"x", ""}})));
  world.start();
  world.session().configuration().read(L"search_path d:\\a\nSEARCH_PATH d:\\b\n");
  world.open(L"BRACKET", creo::ProMdlType::part);
  world.run("list.xml");
  EXPECT_EQ(L"d:\\a,d:\\b,d:/%COLOR%", option(L"search_path"));
  EXPECT_EQ(L"mm", option(L"units"));  // of two saved values the later
  EXPECT_EQ(L"a4", option(L"format"));
  EXPECT_EQ(
      L"B6 set config option|Reset saved configuration options from s|"
      L"Found 2 configuration values for the option 'search_path'|Set search_path to d:\\a|Set search_path to d:\\b|"
      L"Found 1 configuration values for the option 'units'|Set units to inch|"
      L"Found 2 configuration values for the option 'search_path'|Set search_path to d:\\a|Set search_path to d:\\b|"
      L"Found 1 configuration values for the option 'units'|Set units to mm|"
      L"Set declared configuration options|Configuration option 'format' is set to 'a4'|"
      L"B7 set config option|Reset saved configuration options from S|Set declared configuration options|"
      L"B8 save Config Options",
      told(world.log()).substr(told(world.log()).find(L"B6 ")));
  EXPECT_TRUE(actions::savedConfigOptions(L"s").empty());  // a name holds within one run
}

TEST_F(Surroundings, AnOptionThatCantBeSetIsTold) {
  world.list("list.xml", task("setConfigOption", "",
                              options({{"two words", "1"},
                                       {std::string(32, 'n'), "1"},
                                       {"long", std::string(260, 'v')},
                                       {"refused", "1"},
                                       {"unvalued", ""},
                                       {"good", "1"}})));
  world.start();
  world.open(L"BRACKET", creo::ProMdlType::part);
  world.session().failNext("ProConfigoptSet", creo::ProNoError);
  world.session().failNext("ProConfigoptSet", creo::ProGeneralError);
  world.run("list.xml");
  EXPECT_EQ(
      L"B0 set config option|Set declared configuration options|E:The configuration option 'two words' can't be "
      L"found|E:The configuration option '" +
          std::wstring(32, L'n') +
          L"' can't be found|E:The configuration value for 'long' can't be set|E:The configuration value for 'refused' "
          L"can't be set|Configuration option 'good' is set to '1'",
      told(world.log()));
}

TEST_F(Surroundings, ProgramsRunWaitedForOrNot) {
  const auto clock = std::make_shared<os::FixedClock>(1700000000);
  os::surroundings().clock = clock;
  EXPECT_EQ(
      L"B0 Run MSDos command|Run Shell Command|B1 Run MSDos command|Run Shell Command|B2 Run MSDos "
      L"command|W:'1 s' is read as 1|Run Shell Command",
      run(task("runMSDOScommand", "cmd='d:/tools/mail.cmd' args='-s &quot;%COLOR%&quot;' uncup='false' waitafter='2'") +
          task("runMSDOScommand", "cmd='echo'") +
          task("runMSDOScommand", "cmd='@project_dir@/a.cmd' args='x' uncup='true' waitafter='1 s'")));
  ASSERT_EQ(3U, programs().asked().size());
  EXPECT_EQ(L"run d:\\tools\\mail.cmd -s \"red\"", programs().asked()[0]);
  EXPECT_EQ(L"run echo ", programs().asked()[1]);
  EXPECT_TRUE(programs().asked()[2].starts_with(L"start "));
  EXPECT_TRUE(programs().asked()[2].ends_with(L"\\models\\a.cmd x"));
  EXPECT_EQ(3000, clock->slept());
}

TEST_F(Surroundings, AProgramThatFailsIsTold) {
  world.config("kvd_write_history_in_models=0");
  const auto clock = std::make_shared<os::FixedClock>(1700000000);
  world.list("list.xml", task("runMSDOScommand", "cmd='mail' waitafter='5'"));
  world.list("start.xml", task("runMSDOScommand", "cmd='mail' uncup='true' waitafter='5'"));
  world.start();
  os::surroundings().clock = clock;
  world.open(L"BRACKET", creo::ProMdlType::part);
  const auto outcome = [&](const std::string& list) {
    world.run(list);
    const std::wstring all = told(world.log());
    return all.substr(all.rfind(L"B0 Run MSDos command") + 21);
  };
  programs().endWith(3);
  EXPECT_EQ(L"W:The program ended with status 3: mail|Run Shell Command", outcome("list.xml"));
  programs().endWith(os::kNoProgram);
  EXPECT_EQ(L"E:The program can't be found: mail|Run Shell Command", outcome("list.xml"));
  // Where programs are refused nothing is waited for.
  const os::DoorsGuard guard;
  os::doors().programs = os::Door::closed;
  const auto slept = clock->slept();
  EXPECT_EQ(L"E:This run starts no programs: mail|Run Shell Command", outcome("list.xml"));
  EXPECT_EQ(L"E:This run starts no programs: mail|Run Shell Command", outcome("start.xml"));
  EXPECT_EQ(slept, clock->slept());
  EXPECT_EQ(2U, programs().asked().size());
}

// On the machine's own command processor, in Creo's working folder.
TEST_F(Surroundings, ACommandReachesTheMachine) {
  os::surroundings().processes = os::machineProcesses();
  std::filesystem::create_directories(world.models() + "/here");
  const auto command = [](const std::string& program, const std::string& more = "") {
    return task("runMSDOScommand", "cmd='" + program + "' " + more);
  };
  const std::wstring all = run(
      task("setWorkingDirectory", "path='d:/here'") + command("echo", "args='%COLOR% &gt; &quot;d:/Out it.txt&quot;'") +
      command("echo", "args='there &gt;beside.txt'") + command("d:/none.exe") + command("d:/none.exe", "uncup='true'") +
      command("rmdir", "args='d:/here'") + command("mv", "args='d:/here d:/gone'") + command("true"));
  EXPECT_EQ("red\n", readBytes(world.models() + "/Out it.txt"));
  EXPECT_EQ("there\n", readBytes(world.models() + "/gone/beside.txt"));
  for (const wchar_t* line :
       {L"B3 Run MSDos command|E:The program can't be found: d:\\none.exe|",
        L"B4 Run MSDos command|E:The program can't be started (No such file or directory): "
        L"d:\\none.exe|",
        L"B5 Run MSDos command|W:The program ended with status 1: rmdir d:\\here|",
        L"B6 Run MSDos command|Run Shell Command|",
        // its working folder isn't there any more
        L"B7 Run MSDos command|E:The program can't be started (No such file or directory): true|"})
    EXPECT_NE(all.npos, all.find(line)) << text::toUtf8(line) << "\n" << text::toUtf8(all);
}

TEST_F(Surroundings, ProgramsInheritTheEnvironmentThatAListSets) {
  const std::wstring all = run(task("setEnvironmentVariable", "name='KVD_TEST_@mdln@' value='%COLOR%/x'") +
                               task("setEnvironmentVariable", "name='A=B' value='1'") +
                               task("setEnvironmentVariable", "name='%MISSING%' value='1'"));
  EXPECT_TRUE(
      all.starts_with(L"B0 Set environment variable|set KVD_TEST_BRACKET=red\\x|B1 Set environment variable|set "
                      L"A=B=1|E:Setting of the environment variable failed|B2 Set environment variable|"))
      << text::toUtf8(all);
  EXPECT_TRUE(all.ends_with(L"|E:Setting of the environment variable failed"));
  EXPECT_EQ(L"red\\x", os::environment(L"KVD_TEST_BRACKET"));
}

TEST_F(Surroundings, WhatIsntDisplayedLeavesMemory) {
  world.assembly(L"PAIR").uses(L"BRACKET", creo::ProMdlType::part);
  world.part(L"OTHER").with(L"COLOR", L"blue");
  world.list("list.xml", task("eraseUndisplayedModels"));
  world.start();
  headless::retrieveModel(world.session().models(), L"OTHER", creo::ProMdlType::part);
  world.open(L"PAIR", creo::ProMdlType::assembly);
  world.session().failNext("ProMdlEraseNotDisplayed", creo::ProGeneralError);
  world.run("list.xml");
  EXPECT_FALSE(creo::ProMdlInit(L"OTHER", creo::ProMdlType::part));
  EXPECT_TRUE(creo::ProMdlInit(L"BRACKET", creo::ProMdlType::part));  // the assembly shows it
  EXPECT_EQ(std::wstring::npos, told(world.log()).find(L"E:"));
}

// What was changed in a model that an action is still to work on isn't lost with it.
TEST_F(Surroundings, TheModelUnderWorkStaysInMemory) {
  using creo::ProMdlType;
  const std::string erase = task("eraseUndisplayedModels"), save = task("saveModel");
  const std::string add = task("addModelParameter", "name_0='DONE' type_0='Integer' value_0='1'");
  const auto group = [&](const std::string& attributes) {
    return add + task("groupActions", attributes, "<subtasks>" + erase + "</subtasks>") + save;
  };
  struct {
    const wchar_t* row;
    ProMdlType type;
    const wchar_t* shown;  // by the only window, when the run starts
    std::string tasks;
    std::wstring inMemory, refused;  // behind the run; the model that the error line names
  } const rows[] = {
      {L"LONER", ProMdlType::part, L"TOP", add + erase + save, L"LONER", L""},
      {L"PIN", ProMdlType::part, L"TOP", add + erase + save, L"PIN TOP", L""},  // TOP keeps the window
      {L"TOP", ProMdlType::assembly, L"TOP", group("reworkMode='4' forcount='2'"), L"PIN TOP", L""},
      {L"TOP", ProMdlType::assembly, L"TOP", group("reworkMode='3'"), L"LONER OTHER PIN TOP", L"TOP.ASM"},
      {L"LONER", ProMdlType::part, L"LONER", group("reworkMode='5' mdlname='OTHER.PRT'"), L"LONER OTHER", L"LONER.PRT"},
  };
  world.config("kvd_write_history_in_models=0\nkvd_no_pro_notifications=1");
  for (const auto& row : rows) {
    world.endSession();
    std::filesystem::remove_all(world.models());
    std::filesystem::create_directories(world.models());
    std::filesystem::remove(world.packages() + "/standards.kvz");
    for (const wchar_t* name : {L"PIN", L"LONER", L"OTHER"}) world.part(name);
    world.assembly(L"TOP").uses(L"PIN", ProMdlType::part);
    world.list("list.xml", row.tasks);
    world.start();
    world.open(row.row, row.type);
    world.openTool();
    headless::retrieveModel(world.session().models(), L"OTHER", ProMdlType::part);
    if (row.shown != std::wstring(L"LONER"))
      creo::ProMdlDisplay(headless::retrieveModel(world.session().models(), L"TOP", ProMdlType::assembly).value);
    if (row.type == ProMdlType::assembly) headless::retrieveModel(world.session().models(), L"LONER", ProMdlType::part);
    world.pressStart();  // choosing the list again would fill the table for what is displayed now
    std::vector<std::wstring> left;
    for (const auto& model : world.session().models().list()) left.push_back(model.name);
    std::sort(left.begin(), left.end());
    const std::string name = text::toUtf8(text::lower(row.row));
    EXPECT_EQ(row.inMemory, text::join(left, L" ")) << name;
    EXPECT_EQ(L"DONE=1", world.savedParameters(name + (row.type == ProMdlType::part ? ".prt" : ".asm"))) << row.tasks;
    EXPECT_EQ(1U, world.session().windows().all().size());
    const std::wstring reported = test::told(world.log());
    const std::wstring line = L"E:Undisplayed models aren't erased: ";
    EXPECT_EQ(row.refused.empty(), reported.find(L"E:") == reported.npos) << text::toUtf8(reported);
    EXPECT_NE(reported.npos, reported.find(row.refused.empty() ? L"" : line + row.refused + L" is under work"));
  }
}

TEST_F(Surroundings, ServersAndWindowsHaveTheirAnswers) {
  world.list("list.xml", task("clearAllWindows") + task("setServerActive", "name='pdm'") + task("setServerActive") +
                             task("setServerActive") + task("eraseUndisplayedModels"));
  world.start();
  world.open(L"BRACKET", creo::ProMdlType::part);
  world.session().failNext("ProServerActivate", creo::ProNotFound);
  world.session().failNext("ProServerActivate", creo::ProGeneralError);
  for (int i = 0; i < 2; ++i) world.session().failNext("ProMdlEraseNotDisplayed", creo::ProGeneralError);
  world.run("list.xml");
  EXPECT_EQ(
      L"B0 Clear all windows|W:This function is senseless in Kelvane Player|B1 Set server active|E:Server no found|"
      L"B2 Set server active|E:Error while searching for the server|B3 Set server active|E:Server no found|"
      L"B4 Erase undisplayed models|E:Can't erase undisplayed models",
      told(world.log()));
}

TEST_F(Surroundings, TheInsertPositionIsFoundInFourWays) {
  writeBytes(
      world.models() + "/plate.prt.1",
      R"({"format": 1, "features": [{"id": 11, "name": "BASE", "type": 916}, {"id": 5, "name": "HOLE_1", "type": 911},
                 {"id": 7, "name": "HOLE_2", "type": 911}, {"id": 9}]})");
  world.config("kvd_write_history_in_models=0");
  struct {
    std::string attributes;
    std::wstring told;
    int place;
  } const cases[] = {
      {"feat='2' featid='5'", L"after feature: 5 HOLE_1", 2},
      {"feat='1' feattype='38'", L"after feature: 11 BASE", 1},
      {"feat='3' featnum='3'", L"after feature: 7 HOLE_2", 3},
      {"feat='4' featname='B*'", L"after feature: 11 BASE", 1},
      {"feat='2' featid='9'", L"after feature: 9", 0},  // the last one: nothing comes behind it
      {"feat='4' featname='HOLE_*'", L"after feature: 5 HOLE_1", 2},
      {"feat='2' featid='6'", L"E:Declared feature can't be found", 2},
      {"feat='5' featid='7'", L"E:Declared feature can't be found", 2},
      {"feat='1' feattype='hole'",
       L"W:feattype: 'hole' is no code of a feature type, which goes from 0 to 246|E:Declared feature can't be found",
       2},
  };
  int number = 0;
  for (const auto& entry : cases)
    world.list("list" + std::to_string(number++) + ".xml",
               task("setInsertFeaturePosition", entry.attributes) + task("saveModel"));
  world.list("cancel.xml", task("cancelFeaturePosition") + task("cancelFeaturePosition"));
  world.start();
  const creo::ProMdl plate = world.open(L"PLATE", creo::ProMdlType::part);
  number = 0;
  for (const auto& [attributes, line, place] : cases) {
    world.run("list" + std::to_string(number++) + ".xml");
    const std::wstring all = told(world.log());
    EXPECT_NE(all.npos, all.find(L"B0 Set insert feature position|" + line)) << attributes << text::toUtf8(all);
    EXPECT_EQ(place, world.session().models().find(plate)->document->record.insertAfter) << attributes;
  }
  EXPECT_NE(std::string::npos, world.document("plate.prt").find("\"insertAfter\": 2"));
  world.run("cancel.xml");
  EXPECT_NE(std::wstring::npos,
            told(world.log())
                .find(L"B0 Cancel feature position|Insert mode is active and get canceled|Insert mode is "
                      L"canceled|B1 Cancel feature position|Insert mode is not active"));
  EXPECT_EQ(0, world.session().models().find(plate)->document->record.insertAfter);
}

class DetailOptions : public Surroundings {
 protected:
  void SetUp() override {
    writePair(world.models());
    writeBytes(world.models() + "/own/iso.dtl", "! comment\ntext_height 3.5\n\n  drawing_units\tmm \nTEXT_HEIGHT 5\n");
    writeBytes(world.models() + "/own/odd.dtl", "text_height 7\nlonely\ntwo$ 1\n");
  }
  static std::string set(const std::string& path) { return task("setDTL", "view='" + path + "'"); }
};

TEST_F(DetailOptions, AreStoredInTheDrawing) {
  EXPECT_EQ(
      L"B0 Set DTL|New DTL is set|B1 Set DTL|New DTL is set|B2 Save model",
      run(set("d:/own/iso.dtl") + set("d:\\OWN\\odd.dtl") + task("saveModel"), L"PAIR", creo::ProMdlType::drawing));
  EXPECT_NE(std::string::npos, world.document("pair.drw").find(R"(  "detailOptions": [
    {
      "name": "text_height",
      "value": "7"
    },
    {
      "name": "drawing_units",
      "value": "mm"
    }
  ])"))
      << world.document("pair.drw");
  EXPECT_EQ(L"d:\\", creo::ProDirectoryCurrentGet().value);
  EXPECT_TRUE(world.session().ui().questions().empty());  // the dialog about odd lines was answered in advance
}

TEST_F(DetailOptions, FailuresPutTheFolderBack) {
  world.list("list.xml", set("d:/none/iso.dtl") + set("d:/own/none.dtl") + set("d:/own/iso.dtl"));
  world.start();
  world.open(L"GEAR", creo::ProMdlType::part);
  world.run("list.xml");
  EXPECT_EQ(
      L"B0 Set DTL|E:Can't set path as current path|B1 Set DTL|E:Failure occured while set new DTL|"
      L"B2 Set DTL|E:Failure occured while set new DTL",
      told(world.log()));  // a part has no detail options
  EXPECT_EQ(L"d:\\", creo::ProDirectoryCurrentGet().value);
}

}  // namespace
}  // namespace test
