// Start and end of the plug-in by its two entries.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/state.h"
#include "creo/ProUIShow.h"
#include "headless/proui/ui.h"
#include "support/world.h"
#include "text/encoding.h"

namespace {

using namespace creo;
using core::pluginState;
using test::World;

TEST(Start, ReadsTheConfigurationAndAddsTheMenu) {
  World world;
  world.config("kvd_log_level=8");
  ASSERT_EQ(0, world.start());
  EXPECT_EQ(8, pluginState().loglevel);
  EXPECT_EQ(L"t:\\open_kvz\\", pluginState().openKvzPath);
  EXPECT_EQ((std::vector<std::string>{"KVANEVisitParametersCmd", "KVDHelpCmd"}), world.session().commands());
  EXPECT_EQ(L"<KVD> Kelvane User 8.0.1.1 started\n", world.messages());
}

TEST(Start, ALevelThatTheLogDoesntHaveCountsAsTheFirstAndIsNamed) {
  World world;
  world.list("a.xml", "");
  world.config("kvd_log_level=5");
  ASSERT_EQ(0, world.start());
  EXPECT_EQ(L"<KVD> Kelvane User 8.0.1.1 started\n<KVD> kvd_log_level=5 is none of 0, 1, 2 and 8 and counts as 0\n",
            world.messages());
  world.openTool();
  EXPECT_EQ(0, pluginState().loglevel);
  EXPECT_NE(std::wstring::npos, world.session().ui().dialog("kvanerunner")->tree("kvaneLogTT").find(L"kvaneChild)"))
      << "the welcome stands there";
}

TEST(Start, ASiteFileAddsTheInstallCommand) {
  World world;
  test::writeBytes(world.packages() + "/kvuser_config.pro", "menu_show yes\n");
  ASSERT_EQ(0, world.start());
  const auto commands = world.session().commands();
  EXPECT_EQ(1, std::count(commands.begin(), commands.end(), "KVDInstallUICmd"));
}

TEST(Start, ATempFolderWithoutPermissionEndsItAndIsNamed) {
  World world;
  world.disk().denyWrites(L"t:\\");
  EXPECT_EQ(-1, world.start());
  EXPECT_EQ(L"<KVD> Kelvane User 8.0.1.1 started\n<KVD> No rights to write files inside the temp directory.\nt:\\\n",
            world.messages());
  EXPECT_EQ(L"<KVD> No rights to write files inside the temp directory.", world.session().startError());
}

TEST(Start, AnUnknownCreoGetsNoMenu) {
  World world;
  ASSERT_EQ(0, world.start());
  world.session().unloadPlugin();
  // The session's own version is fixed at its start: another session calls itself otherwise.
  headless::SessionOptions options = world.session().options();
  world.endSession();
  options.version = "Creo 3.0";
  headless::Session other(options);
  ASSERT_EQ(0, other.loadPlugin());
  EXPECT_TRUE(other.commands().empty());
  EXPECT_EQ(L"Creo 3.0", other.messages().back());
}

TEST(Start, OtherWideCharactersAreRefused) {
  World world;
  ASSERT_EQ(0, world.start());
  headless::SessionOptions options = world.session().options();
  world.endSession();
  options.wideCharSize = 2;
  headless::Session other(options);
  EXPECT_EQ(-1, other.loadPlugin());
  EXPECT_EQ(L"<KVD> main - Incorrect size of wchar_t: 4/2.", other.startError());
}

TEST(Start, WithoutGraphicsTheToolOpensUnseen) {
  World world;
  world.list("a.xml", "");
  ASSERT_EQ(0, world.start(false));
  EXPECT_TRUE(pluginState().workerMode);
  EXPECT_NE(std::wstring::npos, world.messages().find(L"<KVD> No Graphics Mode detected\n"));
  for (int press = 0; press < 2; ++press) {
    world.openTool();
    EXPECT_TRUE(pluginState().toolOpen);
    EXPECT_FALSE(world.session().ui().dialog("kvanerunner")->visible);
  }
}

TEST(Start, HelpLiesBesideTheTextFolderWhateverTheConfigurationSays) {
  for (const char* language : {"en", "de"}) {
    World world;
    world.config("kvd_bin_path=d:\\elsewhere\\");
    world.config(std::string("kvd_lang=") + language);
    world.start();
    world.session().runCommand("KVDHelpCmd");
    const auto& asked = dynamic_cast<os::RecordedProcesses&>(os::processes()).asked();
    ASSERT_EQ(1U, asked.size());
    EXPECT_EQ(L"i:\\help\\ol_kvd_help_" + text::fromUtf8(language) + L".exe", asked[0]);
  }
}

TEST(Start, ASecondPressBringsTheOpenDialogForward) {
  World world;
  world.list("a.xml", "");
  world.start();
  world.openTool();
  world.openTool();
  EXPECT_EQ(1, pluginState().visitCount);
  EXPECT_EQ(1, world.session().calls("ProUIDialogHide"));
}

TEST(Start, AToolWithoutItsDialogCanBeOpenedLater) {
  World world;
  world.list("a.xml", "");
  world.start();
  world.session().failNext("ProUIDialogCreate", ProGeneralError);
  world.openTool();
  EXPECT_FALSE(pluginState().toolOpen);
  EXPECT_NE(std::wstring::npos, world.messages().find(L"Failure happend\n"));
  world.openTool();
  EXPECT_TRUE(pluginState().toolOpen);
}

TEST(Start, TheSidesComeBackAsTheyWere) {
  World world;
  world.list("a.xml", "");
  world.config("kvd_show_log=0");
  world.config("kvd_show_tree=1");
  world.start();
  world.openTool();
  EXPECT_EQ(0, pluginState().logVisible);
  EXPECT_EQ(1, pluginState().treeVisible);
  world.closeTool();
  world.openTool();
  EXPECT_EQ(0, pluginState().logVisible);
  EXPECT_EQ(1, pluginState().treeVisible);
}

TEST(Start, ASideFoldsAwayWithAllItHolds) {
  for (const bool asTree : {true, false}) {
    World world;
    world.list("a.xml", "");
    world.config(asTree ? "kvd_log_as_tree=1" : "kvd_log_as_tree=0");
    world.start();
    world.openTool();
    headless::Ui& ui = world.session().ui();
    const headless::Dialog& main = *ui.dialog("kvanerunner");
    const auto shown = [&](std::initializer_list<const char*> names) {
      std::string text;
      for (const char* name : names) text += main.shown(name) ? '1' : '0';
      return text + (main.mapped("kvaneLayerLeft") ? " t" : " -") + (main.mapped("kvaneLayerLog") ? "l" : "-");
    };
    const auto table = {"kvaneLayerLeft", "kvaneCurModFilterLbl", "kvanePrtFilter", "kvaneExtFilter", "LargeTable"};
    const auto log = {"kvaneLayerLog",      "kvaneLayerLogTitle", "kvaneLogLbl", "kvaneLayerLogFilterChooser",
                      "kvaneOpenLogFolder", "kvaneLogTT",         "kvaneLogTA"};
    EXPECT_EQ("11111 tl", shown(table));
    ui.press("kvanerunner", "kvaneShowTree");
    EXPECT_EQ("00000 -l", shown(table));
    // As a site's own resource shows them.
    for (const char* name : {"kvaneShowLog_hide", "kvaneShowTree_show"}) {
      EXPECT_FALSE(main.shown(name));
      ASSERT_EQ(creo::ProNoError, creo::ProUIPushbuttonShow("kvanerunner", name));
    }
    ui.press("kvanerunner", "kvaneShowLog_hide");
    EXPECT_EQ("0000000 --", shown(log));
    ui.press("kvanerunner", "kvaneShowTree_show");
    ui.press("kvanerunner", "kvaneShowLog");
    EXPECT_EQ("11111 tl", shown(table));
    EXPECT_EQ(asTree ? "1111110 tl" : "1111101 tl", shown(log));
  }
}

TEST(Start, TheEndRemovesTheLogsAndNothingElse) {
  World world;
  world.list("a.xml", "");
  world.start();
  world.openTool();
  test::writeBytes(world.temp() + "/kvd_log - other.csv", "kept");
  ASSERT_TRUE(std::filesystem::exists(world.temp() + "/writetest.txt"));
  const std::string log = world.machine(pluginState().logFile);
  ASSERT_TRUE(std::filesystem::exists(log));
  world.session().unloadPlugin();
  EXPECT_FALSE(std::filesystem::exists(log));
  EXPECT_TRUE(std::filesystem::exists(world.temp() + "/kvd_log - other.csv"));
}

}  // namespace
