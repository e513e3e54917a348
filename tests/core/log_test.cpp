#include "core/log.h"

#include <gtest/gtest.h>

#include <sstream>

#include "core/state.h"
#include "creo/ProUI.h"
#include "headless/proui/ui.h"
#include "support/world.h"

namespace {

using core::logIndented;
using core::logWrite;
using core::pluginState;
using test::World;

// The tool is open and its own lines are closed away: the next line begins a file.
class Log : public ::testing::Test {
 protected:
  Log() {
    clock_ = std::make_shared<os::FixedClock>(1700000000);
    os::surroundings().clock = clock_;
    world_.list("a.xml", "");
    world_.config("kvd_write_welcome_message=0");
    world_.start();
    world_.openTool();
    core::logCloseFile();
  }
  void act(std::wstring_view title) {
    pluginState().section = L'B';
    logIndented(title, core::kNormal, 0);
  }
  std::wstring tree() { return world_.session().ui().dialog("kvanerunner")->tree("kvaneLogTT"); }

  World world_;
  std::shared_ptr<os::FixedClock> clock_;
};

TEST_F(Log, LinesSayLevelPlaceActionAndModel) {
  pluginState().currentModelText = L"work now on A.PRT";
  act(L"Save model");
  logIndented(L"step", core::kNormal, 1);
  logWrite(L"slow", core::kWarning);
  logWrite(L"broken", core::kError);
  logWrite(L"hidden", core::kDebug);
  logWrite(L"two\nli\x1b[2Jnes\v\u0085\u2028\tone", core::kTitle);
  logWrite(L"what", 5);
  EXPECT_EQ(
      L"0   B0 Save model\n"
      L"0     step\n"
      L"1(WAR) B0 Save model - work now on A.PRT - slow\n"
      L"2(ERR) B0 Save model - work now on A.PRT - broken\n"
      L"9 two li [2Jnes   \tone\n"
      L"MESSAGE TYPE NOT SUPPORTED\n",
      world_.log());
}

TEST_F(Log, TheFileHasCrLfAndUtf8) {
  logWrite(L"Gr\u00f6\u00dfe", core::kTitle);
  EXPECT_EQ(
      "9 Gr\xC3\xB6\xC3\x9F"
      "e\r\n",
      test::readBytes(World::machine(pluginState().logFile)));
}

TEST_F(Log, DebugLinesReachTheFileOnlyWhenAskedFor) {
  pluginState().loglevel = 8;
  logWrite(L"hidden", core::kDebug);
  pluginState().noDebugInLogFile = 0;
  logWrite(L"seen", core::kDebug);
  EXPECT_EQ(L"8(DBG) seen\n", world_.log());
}

TEST_F(Log, GroupsPrefixTheirLinesAndDepthIsBounded) {
  {
    const core::LogGroup outer(L"- G0 ");
    const core::LogGroup inner(L"- G12 ");
    logIndented(L"deep", core::kNormal, 1);
    logIndented(L"deeper", core::kNormal, 10);
  }
  logIndented(L"out", core::kNormal, 1);
  EXPECT_EQ(L"0 " + std::wstring(8, L' ') + L"- G0 - G12 deep\n0 " + std::wstring(22, L' ') +
                L"- G0 - G12 deeper\n0     out\n",
            world_.log());
  EXPECT_NE(std::wstring::npos, world_.messages().find(L"<KVD> DEEEP FAILURE IN PROGRAM :D\n"));
}

TEST_F(Log, LongLinesAreCutAndNoPairIsSplit) {
  std::wstring text(516, L'x');
  text += L"\U0001F600";  // its two units would be the 519th and 520th with the level
  logWrite(text, core::kTitle);
  EXPECT_EQ(L"9 " + std::wstring(516, L'x') + L"\n", world_.log());
}

TEST_F(Log, TwoRunsInOneSecondGetTwoFiles) {
  logWrite(L"first", core::kTitle);
  EXPECT_EQ(L"t:\\kvd_log - tester - 1700000000.txt", pluginState().logFile);
  core::logCloseFile();
  logWrite(L"second", core::kTitle);
  EXPECT_EQ(L"t:\\kvd_log - tester - 1700000000_1.txt", pluginState().logFile);
  clock_->set(1700000001);
  core::logCloseFile();
  logWrite(L"third", core::kTitle);
  EXPECT_EQ(L"t:\\kvd_log - tester - 1700000001.txt", pluginState().logFile);
}

TEST_F(Log, ALogThatCantBeOpenedStopsNothing) {
  world_.disk().denyWrites(L"t:\\");
  logWrite(L"lost", core::kTitle);
  EXPECT_NE(std::wstring::npos, world_.messages().find(L"<KVD> Can't open log file: 13\nt:\\kvd_log - tester - "));
  EXPECT_NE(std::wstring::npos, world_.messages().find(L"9 lost\n"));
}

TEST_F(Log, ErrorsMarkAllTheirAncestors) {
  logWrite(L"Run Body", core::kTitle);
  act(L"Save model");
  logIndented(L"step", core::kNormal, 1);
  logWrite(L"broken", core::kError);
  act(L"Second");
  logWrite(L"careful", core::kWarning);
  pluginState().showNoWarnings = 0;
  core::logRender();
  EXPECT_EQ(
      L"Log (kvaneParentErr)\n"
      L"  Run Body (kvaneParentErr)\n"
      L"    B0 Save model (kvaneParentErr)\n"
      L"      step (kvaneParentErr)\n"
      L"        (ERR) B0 Save model -  - broken (kvaneChildErr)\n"
      L"    B0 Second (kvaneParentWar)\n"
      L"      (WAR) B0 Second -  - careful (kvaneChildWar)\n",
      tree());
}

TEST_F(Log, AsTextItStandsAsTheLevelChoosesAndTheTreeStaysHidden) {
  headless::Ui& ui = world_.session().ui();
  const headless::Dialog& main = *ui.dialog("kvanerunner");
  pluginState().logType = 0;
  ui.press("kvanerunner", "kvaneShowLog");
  ui.press("kvanerunner", "kvaneShowLog");
  const auto shows = [&main](const std::wstring& text) {
    EXPECT_EQ(text, main.text("kvaneLogTA"));
    EXPECT_TRUE(main.shown("kvaneLogTA"));
    EXPECT_FALSE(main.shown("kvaneLogTT"));
  };
  logWrite(L"Run Body", core::kTitle);
  act(L"Save model");
  logWrite(L"careful", core::kWarning);
  logWrite(L"broken", core::kError);
  core::logRender();
  const std::wstring title = L"9 Run Body\n", step = L"0   B0 Save model\n",
                     warning = L"1(WAR) B0 Save model -  - careful\n", error = L"2(ERR) B0 Save model -  - broken\n";
  shows(title + step + error);  // without warnings, as the configuration has it
  const std::pair<const char*, std::wstring> levels[] = {
      {"1", title + warning + error}, {"2", title + error}, {"8", title + step + warning + error}};
  for (const auto& [level, text] : levels) {
    ui.choose("kvanerunner", "kvaneLayerLogFilterChooser", level);
    shows(text);
  }
  logWrite(L"another file", core::kTitle);
  core::logRender();
  shows(L"9 another file\n");
  logWrite(L"closed", core::kTitle);
  core::logCloseFile();
  shows(L"9 another file\n");
}

TEST_F(Log, AtTheErrorLevelTheTreeHoldsTitlesAndErrors) {
  logWrite(L"Run Body", core::kTitle);
  act(L"Save model");
  logWrite(L"careful", core::kWarning);
  logWrite(L"broken", core::kError);
  world_.session().ui().choose("kvanerunner", "kvaneLayerLogFilterChooser", "2");
  EXPECT_EQ(
      L"Log (kvaneParentErr)\n"
      L"  Run Body (kvaneParentErr)\n"
      L"    (ERR) B0 Save model -  - broken (kvaneChildErr)\n",
      tree());
}

}  // namespace
