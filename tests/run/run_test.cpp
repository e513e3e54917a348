// Whole runs, from the press on start to the last line.
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "actions/run_names.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProNotify.h"
#include "creo/ProUI.h"
#include "creo/ProWindow.h"
#include "headless/proui/ui.h"
#include "os/processes.h"
#include "run/history.h"
#include "run/run.h"
#include "support/world.h"
#include "text/pieces.h"

namespace {

using namespace creo;
using core::pluginState;
using test::World;

const std::string kForAll = " forPRT='true' forASM='true' forDRW='true' forEF='false'";

std::string task(const std::string& type, const std::string& attributes = "") {
  return "<task type='" + type + "' version='3'" + kForAll + " " + attributes + "/>";
}
std::string say(const std::string& text) { return task("writeToCreoLog", "message='" + text + "'"); }
std::string addText(const std::string& name, const std::string& value) {
  return task("addModelParameter", "name_0='" + name + "' type_0='String' value_0='" + value + "'");
}

// The lines of the log whose text begins with the piece, without what stands before it.
std::wstring linesWith(const World& world, std::wstring_view piece) {
  std::wstring found;
  for (const std::wstring& line : text::lines(world.log())) {
    const std::size_t at = line.find(piece);
    if (at != std::wstring::npos) found += line.substr(at) + L"\n";
  }
  return found;
}

// An assembly of two parts and its drawing, all rows of one table.
void gearbox(World& world) {
  world.part(L"SHAFT").with(L"MASS", 2.5);
  world.part(L"HOUSING");
  world.assembly(L"GEARBOX").uses(L"SHAFT", ProMdlType::part).uses(L"HOUSING", ProMdlType::part);
  world.drawing(L"GEARBOX").uses(L"GEARBOX", ProMdlType::assembly);
}

TEST(Run, AParameterIsAddedSavedAndTheHistoryIsInTheModel) {
  World world;
  world.part(L"BRACKET").with(L"MASS", 2.5);
  world.list("title.xml", addText("COLOR", "red") + task("saveModel"));
  world.runOn(L"BRACKET", ProMdlType::part, "title.xml");
  EXPECT_EQ(2, world.version("BRACKET.prt"));
  EXPECT_EQ(L"MASS=2.5 COLOR=red", world.savedParameters("BRACKET.prt"));
  EXPECT_TRUE(ProMdlModificationVerify(ProMdlCurrentGet().value).value) << "the history waits for the next save";
  EXPECT_FALSE(world.logHas(L"(ERR)"));
}

TEST(Run, HeadBodyAndFootWriteTheirTitles) {
  World world;
  gearbox(world);
  world.list("say.xml", say("body"), say("head"), say("foot"));
  world.runOn(L"SHAFT", ProMdlType::part, "say.xml");
  EXPECT_EQ(
      L"9 Run Head actions\n0   H0 Write To Creo Log\n0     Filter\n0     head\n"
      L"9 Run Body actions for SHAFT.PRT\n9 work now on SHAFT.PRT\n0   B0 Write To Creo Log\n0     Filter\n0     body\n"
      L"9 Run Foot actions\n0   F0 Write To Creo Log\n0     Filter\n0     foot\n9 Run finished\n9 \n9 \n9 \n",
      world.log());
}

TEST(Run, PartsThenAssembliesThenDrawings) {
  World world;
  gearbox(world);
  world.list("say.xml", say("@mdln@"));
  world.start();
  world.open(L"GEARBOX", ProMdlType::drawing);
  world.run("say.xml");
  EXPECT_EQ((std::vector<std::string>{"GEARBOX.ASM", "GEARBOX.DRW", "HOUSING.PRT", "SHAFT.PRT"}), world.rows());
  EXPECT_EQ(L"work now on HOUSING.PRT\nwork now on SHAFT.PRT\nwork now on GEARBOX.ASM\nwork now on GEARBOX.DRW\n",
            linesWith(world, L"work now on"));
}

TEST(Run, TheDrawingRefreshGoesBackToItsTabOnlyBehindARowThatWasPassedOver) {
  for (const bool passedOver : {true, false}) {
    World world;
    world.part(passedOver ? L"Z" : L"A");
    world.drawing(L"M").uses(passedOver ? L"Z" : L"A", ProMdlType::part);
    world.list("say.xml", say("x"));
    world.runOn(L"M", ProMdlType::drawing, "say.xml");
    EXPECT_EQ(L"9 Run finished\n", linesWith(world, L"9 Run finished"));
    EXPECT_EQ(passedOver, !pluginState().controlName.empty());
  }
}

TEST(Run, OneChosenRowOpensNoWindow) {
  World world;
  gearbox(world);
  world.list("say.xml", say("@mdln@"));
  world.start();
  world.open(L"GEARBOX", ProMdlType::assembly);
  world.openTool();
  world.choose("say.xml");
  world.session().ui().press("kvanerunner", "SelectNoneBtn_MenuRMBChooser");
  world.session().ui().setCheck("kvanerunner", "SHAFT.PRT_cb", true);
  world.pressStart();
  EXPECT_EQ(L"work now on SHAFT.PRT\n", linesWith(world, L"work now on"));
  EXPECT_EQ(0, world.session().calls("ProObjectwindowCreate"));
}

TEST(Run, WindowsOfTheRunAreClosedAndOthersStay) {
  World world;
  gearbox(world);
  world.list("say.xml", say("x"));
  world.start();
  const ProMdl shaft = world.open(L"SHAFT", ProMdlType::part);
  const int window = ProMdlWindowGet(shaft).value;
  const ProMdl box = world.open(L"GEARBOX", ProMdlType::assembly);
  world.run("say.xml");
  EXPECT_EQ(window, ProMdlWindowGet(shaft).value);
  EXPECT_TRUE(ProMdlWindowGet(box));
  EXPECT_EQ(1, world.session().calls("ProObjectwindowCreate"));
  EXPECT_FALSE(ProMdlWindowGet(ProMdlInit(L"HOUSING", ProMdlType::part).value));
  EXPECT_FALSE(actions::runGoesOn());
}

// What comes before the run's last window has gone is no other model of the person's, and the rows stay as they are.
TEST(Run, TheTableStaysBehindARunThatEndsInAWindowOfItsOwn) {
  World world;
  gearbox(world);
  world.list("show.xml", "<task type='groupActions' version='3'" + kForAll +
                             " reworkMode='5' mdlname='SHAFT.PRT'><subtasks>" + say("shown") + "</subtasks></task>");
  world.start();
  const ProMdl box = world.open(L"GEARBOX", ProMdlType::assembly);
  world.openTool();
  world.choose("show.xml");
  world.session().ui().setCheck("kvanerunner", "GEARBOX.ASM_cb", false);
  const int before = world.session().calls("ProMdlDependenciesList");
  world.pressStart();
  EXPECT_EQ(2, world.session().calls("ProObjectwindowCreate"));
  EXPECT_TRUE(world.logHas(L"shown"));
  EXPECT_EQ(box, ProMdlCurrentGet().value);
  EXPECT_EQ(before, world.session().calls("ProMdlDependenciesList")) << "the table was filled again";
  world.open(L"SHAFT", ProMdlType::part);
  EXPECT_EQ(std::vector<std::string>{"SHAFT.PRT"}, world.rows()) << "and it follows the person again";
}

TEST(Run, ARowWhoseModelHasGoneGetsItsLineAndTheNextOneRuns) {
  World world;
  gearbox(world);
  world.list("say.xml", say("@mdln@"), say("head"));
  world.start();
  world.open(L"GEARBOX", ProMdlType::assembly);
  world.openTool();
  world.choose("say.xml");
  world.session().failNext("ProMdlRetrieve", ProNotFound);
  world.pressStart();
  EXPECT_EQ(
      L"work now on HOUSING.PRT\nwork now on HOUSING.PRT - Can't retrieve model\nwork now on SHAFT.PRT\n"
      L"work now on GEARBOX.ASM\n",
      linesWith(world, L"work now on"));
  EXPECT_TRUE(world.logHas(L"2(ERR) B0  - work now on HOUSING.PRT")) << "Head's action isn't accused";
  EXPECT_TRUE(world.logHas(L"9 Run finished"));
}

TEST(Run, ARowWhoseCheckButtonCantBeReadGetsItsLineAndTheNextOneRuns) {
  World world;
  gearbox(world);
  world.list("say.xml", say("@mdln@"));
  world.start();
  world.open(L"GEARBOX", ProMdlType::assembly);
  world.openTool();
  world.choose("say.xml");
  // The three rows when they are counted, and the first one at its turn.
  for (int i = 0; i < 4; ++i) world.session().failNext("ProUICheckbuttonGetState", ProGeneralError);
  world.pressStart();
  EXPECT_EQ(
      L"work now on HOUSING.PRT\nwork now on HOUSING.PRT - Can't read whether the model is chosen, it isn't worked\n"
      L"work now on SHAFT.PRT\nwork now on GEARBOX.ASM\n",
      linesWith(world, L"work now on"));
  EXPECT_TRUE(world.logHas(L"9 Run finished"));
}

TEST(Run, AModelThatIsntCheckedOutEndsItBeforeBodyAndFoot) {
  World world;
  gearbox(world);
  world.config("kvd_cancel_if_not_checked_out=1");
  world.list("say.xml", say("body"), say("head"), say("foot"));
  world.runOn(L"GEARBOX", ProMdlType::assembly, "say.xml");
  EXPECT_TRUE(world.logHas(L"0     head"));
  EXPECT_FALSE(world.logHas(L"body"));
  EXPECT_FALSE(world.logHas(L"foot"));
  const std::wstring refusal = L"A file isn't checked out\nA file isn't checked out\n";
  EXPECT_EQ(refusal, linesWith(world, L"A file"));
  EXPECT_EQ(L"not checked out: GEARBOX.ASM\nnot checked out: HOUSING.PRT\nnot checked out: SHAFT.PRT\n",
            linesWith(world, L"not checked out"));
  EXPECT_FALSE(world.logHas(L"Write To Creo Log -")) << "Head's action isn't accused";
  const std::wstring tree = world.session().ui().dialog("kvanerunner")->tree("kvaneLogTT");
  EXPECT_NE(std::wstring::npos, tree.find(L"not checked out: GEARBOX.ASM (kvaneChildErr)")) << "the log is shown";
  EXPECT_FALSE(actions::runGoesOn());
  EXPECT_EQ(L' ', pluginState().section);
  // The table follows Creo again.
  world.open(L"SHAFT", ProMdlType::part);
  EXPECT_EQ((std::vector<std::string>{"SHAFT.PRT"}), world.rows());
  pluginState().noPdmServerInformations = 1;
  world.pressStart();
  EXPECT_EQ(refusal, linesWith(world, L"A file"));
  EXPECT_EQ(L"", linesWith(world, L"not checked out")) << "nobody knows";
  EXPECT_TRUE(world.logHas(L"kvd_show_no_pdm_server_informations=1: the table doesn't show what is checked out"));
}

TEST(Run, AReadOnlyModelIsLeftOutUnlessTheTestIsOff) {
  for (const bool tested : {true, false}) {
    World world;
    world.part(L"NORM").readOnly();
    if (!tested) world.config("kvd_check_modifyable=0");
    world.list("say.xml", say("body"));
    world.runOn(L"NORM", ProMdlType::part, "say.xml");
    EXPECT_EQ(!tested, world.logHas(L"0     body"));
  }
}

TEST(Run, TheFootIsTheFifthChildOrTheFourth) {
  for (const bool five : {true, false}) {
    World world;
    world.part(L"A");
    const std::string extra = five ? "<x>" + say("five") + "</x>" : "";
    std::string list = "<l><h/><b/><f/><foot>" + say("four") + "</foot>" + extra + "</l>";
    for (char& c : list) c = c == '\'' ? '"' : c;
    world.member("actionlists/feet.xml", list);
    world.runOn(L"A", ProMdlType::part, "feet.xml");
    EXPECT_EQ(five, world.logHas(L"0     five"));
    EXPECT_EQ(!five, world.logHas(L"0     four"));
  }
}

TEST(Run, AnActionOfAnotherVersionIsLeftOutAndTheNextOneRuns) {
  World world;
  world.part(L"A");
  world.list("v.xml", "<task type='writeToCreoLog' version='4' message='no'" + kForAll + "/>" + say("yes") +
                          "<task type='writeToCreoLog' version='3' deak='true' message='off'" + kForAll + "/>" +
                          task("delModelParameter"));
  world.runOn(L"A", ProMdlType::part, "v.xml");
  EXPECT_TRUE(
      world.logHas(L"2(ERR) B0 Write To Creo Log - work now on A.PRT - Function isn't used because false version code, "
                   L"please update "
                   L"Kelvane User and Kelvane to the newest version\n0   B1 Write To Creo Log\n"));
  EXPECT_FALSE(world.logHas(L"off"));
  EXPECT_TRUE(world.logHas(L"CAN'T FIND THIS FUNCTION, FAILURE IN DLL\n"));
}

TEST(Run, BreakpointsStopWhereTheySay) {
  struct Case {
    int point;
    bool head, body, foot, finished;
  };
  for (const auto& [point, head, body, foot, finished] :
       {Case{1, false, false, false, false}, Case{2, true, false, false, false}, Case{3, true, false, false, false},
        Case{4, true, false, true, true}, Case{5, true, false, true, true}, Case{6, true, false, true, true},
        Case{7, false, false, false, true}, Case{8, false, false, false, true}, Case{20, true, true, true, true}}) {
    World world;
    gearbox(world);
    world.config("kvd_breakpoint=" + std::to_string(point));
    world.list("say.xml", say("body"), say("head"), say("foot"));
    // The current model's row needs no window; the part's does.
    world.start();
    world.open(L"GEARBOX", ProMdlType::assembly);
    world.run("say.xml");
    EXPECT_EQ(head, world.logHas(L"    head")) << point;
    EXPECT_EQ(body, world.logHas(L"    body") && point != 5) << point;
    EXPECT_EQ(foot, world.logHas(L"    foot")) << point;
    EXPECT_EQ(finished, world.logHas(L"Run finished")) << point;
    EXPECT_FALSE(actions::runGoesOn()) << point;
  }
}

TEST(Run, ClosingTheToolWhileARunWaitsEndsTheRun) {
  World world;
  gearbox(world);
  world.list("say.xml", say("body"), "", say("foot"));
  world.start();
  world.open(L"GEARBOX", ProMdlType::assembly);
  world.openTool();
  world.choose("say.xml");
  world.session().ui().press("kvanerunner", "kvaneStart");
  ASSERT_TRUE(actions::runGoesOn());
  world.closeTool();
  EXPECT_FALSE(actions::runGoesOn());
  EXPECT_FALSE(pluginState().toolOpen);
  EXPECT_FALSE(world.session().ui().dialog("kvanerunner"));
}

TEST(Run, AListThatCantBeReadEndsBehindItsLineAndLeavesNoRecord) {
  const struct {
    const char* what;
    void (*spoil)(World&);
    const wchar_t* line;
  } cases[] = {
      {"gone", [](World& w) { std::filesystem::remove(w.temp() + "/open_kvz_standards/actionlists/say.xml"); },
       L"say.xml: No such file or directory"},
      {"broken", [](World& w) { w.choose("broken.xml"); }, L"broken.xml: line 2: "},
      {"empty", [](World& w) { w.choose("empty.xml"); }, L"empty.xml: it holds no element"},
      {"its package is refused",
       [](World& w) { w.session().ui().choose("kvanerunner", "kvaneKVZChooser", "torn.kvz"); }, L"say.xml: "},
  };
  for (const auto& [what, spoil, line] : cases) {
    World world;
    const bool several = what == std::string("broken");  // the run over several rows ends so too
    gearbox(world);
    world.list("say.xml", say("body"), say("head"), say("foot"));
    world.member("actionlists/broken.xml", "<list>\n<" + std::string(300, 'a') + "/></list>");
    world.member("actionlists/empty.xml", "");
    test::writeBytes(world.packages() + "/torn.kvz", "no zip");
    world.start();
    const ProMdl model =
        several ? world.open(L"GEARBOX", ProMdlType::assembly) : world.open(L"SHAFT", ProMdlType::part);
    world.openTool();
    world.choose("say.xml");
    spoil(world);
    world.pressStart();
    EXPECT_NE(std::wstring::npos, linesWith(world, L"(ERR)").find(line)) << what;
    for (const wchar_t* piece : {L"head", L"body", L"foot", L"work now on", L"Run finished"})
      EXPECT_FALSE(world.logHas(piece)) << what;
    EXPECT_NE(std::wstring::npos, world.session().ui().dialog("kvanerunner")->tree("kvaneLogTT").find(line)) << what;
    EXPECT_EQ(0U, run::readHistory(model).size()) << what;
    EXPECT_FALSE(actions::runGoesOn()) << what;
  }
}

TEST(Run, RowsAreWorkedWithoutAWindowWhereNoneComesForward) {
  const std::wstring all = L"work now on HOUSING.PRT\nwork now on SHAFT.PRT\nwork now on GEARBOX.ASM\n";
  const struct {
    bool graphics;
    const char* fails;  // operation; none: all go well
  } cases[] = {{false, ""},
               {true, "ProObjectwindowCreate"},
               {true, "ProWindowActivate"},
               {true, "ProNotificationSet"},
               {true, "ProMdlDisplay"}};
  for (const auto& [graphics, fails] : cases) {
    World world;
    gearbox(world);
    world.list("say.xml", say("@mdln@"), "", say("foot"));
    ASSERT_EQ(0, world.start(graphics));
    const ProMdl box = world.open(L"GEARBOX", ProMdlType::assembly);
    world.openTool();
    world.choose("say.xml");
    if (*fails) world.session().failNext(fails, ProGeneralError);
    if (*fails) world.session().failNext("ProWindowCurrentSet", ProGeneralError);
    world.pressStart();
    EXPECT_FALSE(actions::runGoesOn()) << fails;
    EXPECT_EQ(all, linesWith(world, L"work now on")) << fails;
    EXPECT_TRUE(world.logHas(L"9 Run finished")) << fails;
    EXPECT_TRUE(ProMdlWindowGet(box)) << fails << " its window still shows it";
    EXPECT_FALSE(ProMdlWindowGet(ProMdlInit(L"SHAFT", ProMdlType::part).value)) << fails;
  }
}

TEST(Run, AnActionThatBreaksOffIsAnErrorLineAndTheNextOneRuns) {
  class Broken : public os::Processes {
    std::error_code doOpen(std::wstring_view) override { throw std::runtime_error("no memory is left"); }
    os::Result<int> doRun(std::wstring_view, std::wstring_view) override {
      throw std::runtime_error("no memory is left");
    }
    std::error_code doStart(std::wstring_view, std::wstring_view, std::wstring_view) override {
      throw std::runtime_error("no memory is left");
    }
  };
  World world;
  gearbox(world);
  world.list("break.xml", task("runMSDOScommand", "cmd='d:/a.cmd' uncup='false' waitafter='1'") + say("behind it"));
  world.start();
  os::surroundings().processes = std::make_shared<Broken>();
  world.open(L"GEARBOX", ProMdlType::assembly);
  world.run("break.xml");
  EXPECT_EQ(L"no memory is left\nno memory is left\nno memory is left\n", linesWith(world, L"no memory is left"));
  EXPECT_EQ(L"behind it\nbehind it\nbehind it\n", linesWith(world, L"behind it"));
  EXPECT_FALSE(actions::runGoesOn());
}

TEST(Run, ASecondRunFindsTheRowWorkedAndItsHistoryHoldsBoth) {
  World world;
  world.part(L"A");
  world.list("say.xml", say("body"));
  world.runOn(L"A", ProMdlType::part, "say.xml");
  world.choose("say.xml");
  EXPECT_FALSE(ProUICheckbuttonGetState("kvanerunner", "A.PRT_cb").value);
  EXPECT_TRUE(ProUICheckbuttonGetState("kvanerunner", "A.PRT_lock").value);
}

TEST(Run, AThousandModelsAreRetrievedAFixedNumberOfTimesEach) {
  const auto callsFor = [](int models) {
    World world;
    auto assembly = std::make_unique<test::ModelBuilder>(world.assembly(L"TOP"));
    for (int i = 0; i < models; ++i) {
      const std::wstring name = L"P" + std::to_wstring(i);
      world.part(name);
      assembly->uses(name, ProMdlType::part);
    }
    assembly.reset();
    world.list("say.xml", say("x"));
    world.runOn(L"TOP", ProMdlType::assembly, "say.xml");
    EXPECT_TRUE(world.logHas(L"work now on P" + std::to_wstring(models - 1) + L".PRT"));
    return world.session().calls("ProMdlRetrieve");
  };
  const int few = callsFor(20), many = callsFor(200);
  EXPECT_LE(many, few * 11);
}

}  // namespace
