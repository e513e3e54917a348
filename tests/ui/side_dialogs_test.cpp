// What the buttons and menus beside a run do: information, highlighting, the log tree, the list on paper, the warning
// on Creo's window.
#include <gtest/gtest.h>

#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProSelection.h"
#include "creo/ProSurface.h"
#include "creo/ProUI.h"
#include "creo/ProUITree.h"
#include "creo/ProWindow.h"
#include "headless/proui/ui.h"
#include "os/surroundings.h"
#include "support/world.h"
#include "text/encoding.h"

namespace {

using namespace creo;
using test::World;

constexpr const char* kMain = "kvanerunner";

class SideDialogs : public testing::Test {
 protected:
  headless::Ui& ui() { return world.session().ui(); }
  headless::Dialog& main() { return *ui().dialog(kMain); }
  // The node whose label holds a text.
  std::string node(std::wstring_view text) {
    for (int i = 0;; ++i) {
      const std::string name = "kvanen" + std::to_string(i);
      const auto label = ProUITreeNodeLabelGet(kMain, "kvaneLogTT", name);
      if (!label) return {};
      if (label.value.find(text) != std::wstring::npos) return name;
    }
  }
  std::wstring selections() {
    std::wstring all;
    for (const auto& [selection, color] : world.session().highlights()) {
      ProAsmcomppath at{selection.path.assembly, {}};
      for (const int id : selection.path.components) {
        at.components.push_back(id);
        all += ProMdlNameGet(ProAsmcomppathMdlGet(at).value).value + L"/";
      }
      all += std::to_wstring(color) + L" ";
    }
    return all;
  }

  World world;
};

TEST_F(SideDialogs, InformationTellsEachKeyWithItsSourceAndIsSaved) {
  world.config("kvd_column_parameter=MATERIAL");
  ASSERT_EQ(0, world.start());
  world.openTool();
  bool sawDialog = false;
  ui().answerQuestions([&](const headless::Question& question) {
    if (question.dialog != "kvaneinfo") return 0;
    sawDialog = true;
    headless::Dialog& info = *ui().dialog("kvaneinfo");
    EXPECT_EQ(L"8.0.1.1", info.text("kvaneInfoVersionFillLbl"));
    const auto& rows = info.labels("kvaneInfoConfigList");
    EXPECT_EQ(25U, rows.size());
    EXPECT_EQ(L"kvd_main.cfg: kvd_column_parameter: MATERIAL", rows[7]);
    EXPECT_EQ(L"default: kvd_log_as_tree: 1", rows[14]);
    ui().answerFileQuestions([&](const headless::FileQuestion& file) -> std::optional<std::wstring> {
      EXPECT_EQ(L"save txt", file.title);
      EXPECT_EQ(L"*.txt", file.filter);
      return core::pluginState().tempPath + L"info.txt";
    });
    EXPECT_EQ(ProNoError, ui().press("kvaneinfo", "kvaneInfoSaveBtn"));
    EXPECT_EQ(ProNoError, ui().press("kvaneinfo", "kvaneInfoOkBtn"));
    return 0;
  });
  EXPECT_EQ(ProNoError, ui().setCheck(kMain, "kvaneInfo", true));
  EXPECT_TRUE(sawDialog);
  EXPECT_EQ(nullptr, ui().dialog("kvaneinfo"));
  EXPECT_FALSE(main().checked("kvaneInfo"));
  const std::string saved = test::readBytes(world.temp() + "/info.txt");
  EXPECT_TRUE(saved.starts_with("Installed KVD Version: 8.0.1.1\nConfiguration path: ")) << saved;
  EXPECT_NE(std::string::npos, saved.find("kvd_main.cfg\nConfiguration:\nkvd_main.cfg: kvd_kvz_path: p:\\\n"))
      << "this configuration reads no file of the user's: " << saved;
  EXPECT_NE(std::string::npos, saved.find("kvd_main.cfg: kvd_column_parameter: MATERIAL\n")) << saved;
}

TEST_F(SideDialogs, InformationComesBackBehindAnyFailedStep) {
  ASSERT_EQ(0, world.start());
  world.openTool();
  int seen = 0;
  ui().answerQuestions([&](const headless::Question&) {
    ++seen;
    return ui().press("kvaneinfo", "kvaneInfoOkBtn");
  });
  for (const char* operation : {"ProUIDialogCreate", "ProUILabelTextSet", "ProUIListNamesSet", "ProUIListLabelsSet",
                                "ProUIDialogCloseActionSet", "ProUIPushbuttonActivateActionSet", "ProUIDialogActivate",
                                "ProUIDialogExit", "ProUIDialogDestroy"}) {
    world.session().failNext(operation, ProGeneralError);
    ui().setCheck(kMain, "kvaneInfo", true);
    seen = 0;
    ui().setCheck(kMain, "kvaneInfo", true);
    EXPECT_EQ(1, seen) << operation;
    EXPECT_EQ(nullptr, ui().dialog("kvaneinfo")) << operation;
  }
}

TEST_F(SideDialogs, HighlightingFindsAModelWhereverItIsUsed) {
  world.part(L"PIN");
  world.part(L"PLATE");
  world.assembly(L"SUB").uses(L"PIN", ProMdlType::part).uses(L"PLATE", ProMdlType::part);
  test::writeBytes(
      world.models() + "/top.asm.1",
      R"({"format": 1, "features": [{"id": 5, "type": 1000}, {"id": 6, "type": 1000}, {"id": 7, "type": 1000}],
                       "components": [{"name": "PIN", "type": "prt", "feature": 5}, {"name": "SUB", "type": "asm",
                       "feature": 6}, {"name": "PIN", "type": "prt", "feature": 7}]})");
  world.list("look.xml", "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
  ASSERT_EQ(0, world.start());
  const ProMdl top = world.open(L"TOP", ProMdlType::assembly);
  world.openTool();
  ASSERT_EQ(ProNoError, ui().selectRows(kMain, "LargeTable", {"PIN.PRT"}));
  EXPECT_EQ(ProNoError, ui().press(kMain, "HighlightFileBtn_MenuRMBChooser"));
  EXPECT_EQ(L"PIN/1 SUB/PIN/1 PIN/1 ", selections());
  auto pins = ProSelbufferSelectionsGet().value;
  ASSERT_EQ(3U, pins.size());
  EXPECT_EQ(std::vector<int>{5}, pins[0].path.components);
  EXPECT_EQ(std::vector<int>{7}, pins[2].path.components) << "another occurrence of the part";
  // What isn't displayed, and what belongs to another model than the current one, can't be selected.
  ProSelbufferClear();
  EXPECT_EQ(ProNoError, ProFeatureWithoptionsSuppress(top, {6}));
  EXPECT_EQ(ProGeneralError, ProSelbufferSelectionAdd(pins[1]));
  EXPECT_EQ(ProNoError, ProSelbufferSelectionAdd(pins[2]));
  pins[2].path.components.push_back(4711);
  EXPECT_EQ(ProGeneralError, ProSelbufferSelectionAdd(pins[2]));
  EXPECT_EQ(ProNotFound, ProAsmcomppathMdlGet(pins[2].path).error);
  EXPECT_EQ(ProGeneralError, ProSelbufferSelectionAdd({pins[2].item, {}})) << "PIN isn't the current model";
  EXPECT_EQ(ProNoError, ProFeatureResume(top, {6}));

  EXPECT_EQ(ProNoError, ui().press(kMain, "SelectNoneBtn_MenuRMBChooser"));
  EXPECT_EQ(ProNoError, ui().setCheck(kMain, "PLATE.PRT_cb", true));
  ProWindowRepaint(-1);
  EXPECT_EQ(ProNoError, ui().press(kMain, "HighlightSelectedBtn_MenuRMBChooser"));
  EXPECT_EQ(L"SUB/PLATE/1 ", selections());
  EXPECT_EQ(1U, ProSelbufferSelectionsGet().value.size()) << "what was selected before isn't any more";
}

TEST_F(SideDialogs, TheLogTreeOpensTheModelOfANodeAndKeepsWhatAPersonUnfolds) {
  world.part(L"PIN");
  world.part(L"PLATE");
  world.assembly(L"TOP").uses(L"PIN", ProMdlType::part).uses(L"PLATE", ProMdlType::part);
  world.list("look.xml", "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
  ASSERT_EQ(0, world.start());
  world.open(L"TOP", ProMdlType::assembly);
  world.run("look.xml");
  const std::string heading = node(L"work now on PLATE.PRT");
  ASSERT_FALSE(heading.empty()) << world.log();

  using enum ProUITreeEvent;
  // A touch of the mark needn't select its node.
  ASSERT_EQ(ProNoError, ui().onNode(kMain, "kvaneLogTT", "kvanen0", select));
  ASSERT_EQ(ProNoError, ui().onNode(kMain, "kvaneLogTT", heading, expand));
  EXPECT_TRUE(ProUITreeNodeIsExpanded(kMain, "kvaneLogTT", heading).value);
  EXPECT_FALSE(ProUITreeNodeIsExpanded(kMain, "kvaneLogTT", "kvanen0").value);
  for (const ProUITreeEvent event : {select, activate}) ui().onNode(kMain, "kvaneLogTT", heading, event);
  EXPECT_TRUE(ProUITreeNodeIsExpanded(kMain, "kvaneLogTT", heading).value);
  ASSERT_EQ(ProNoError, ui().onNode(kMain, "kvaneLogTT", heading, collapse));
  EXPECT_FALSE(ProUITreeNodeIsExpanded(kMain, "kvaneLogTT", heading).value);
  world.session().failNext("ProUITreeTreeexpcolnodeGet", ProGeneralError);
  ASSERT_EQ(ProNoError, ui().onNode(kMain, "kvaneLogTT", heading, expand));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"kvaneLogTT that was touched"));

  EXPECT_EQ(ProNoError, ui().press(kMain, "LoadFileBtn_MenuRMBLog"));
  world.session().settle();
  EXPECT_EQ(L"PLATE", ProMdlNameGet(ProMdlCurrentGet().value).value);
  // Any other line belongs to no model.
  ASSERT_EQ(ProNoError, ui().onNode(kMain, "kvaneLogTT", "kvanen0", select));
  EXPECT_EQ(ProNoError, ui().press(kMain, "LoadFileBtn_MenuRMBLog"));
  EXPECT_EQ(L"PLATE", ProMdlNameGet(ProMdlCurrentGet().value).value);
}

TEST_F(SideDialogs, AListIsWrittenForPaper) {
  world.list("paper.xml", "<task type='saveModel' version='3' forPRT='true'/>",
             "<task type='setWorkingDir' path='d:\\x'/>");
  ASSERT_EQ(0, world.start());
  world.openTool();
  world.choose("paper.xml");
  EXPECT_EQ(ProNoError, ui().press(kMain, "kvaneActionlistPrint"));
  const std::string page = test::readBytes(world.temp() + "/kvd_actionlist.txt");
  EXPECT_NE(std::string::npos, page.find("standards.kvz - paper.xml\n")) << page;
  EXPECT_NE(std::string::npos, page.find("\nHead\n  1 setWorkingDir\n      path = d:\\x\n\nBody\n  1 saveModel\n"
                                         "      version = 3\n      forPRT = true\n\nFoot\n  -\n"))
      << page;
}

TEST_F(SideDialogs, TheIndicatorFollowsTheCurrentModel) {
  world.part(L"GOOD").with(L"CHECKED", true);
  world.part(L"BAD").with(L"CHECKED", false);
  world.part(L"LACKING");
  world.part(L"WORD").with(L"CHECKED", L"1");
  world.part(L"NUMBER").with(L"CHECKED", 1.0);
  world.config("kvd_check_parameter=CHECKED");
  world.config("kvd_check_parameter_value=1");
  ASSERT_EQ(0, world.start());
  const auto warns = [&] {
    headless::Dialog* window = ui().dialog(headless::kWindowDevice);
    return window && window->has("kvd_parameter_lb");
  };
  world.session().settle();
  EXPECT_FALSE(warns()) << "no model";
  for (const auto& [name, wrong] :
       {std::pair(L"LACKING", true), {L"GOOD", false}, {L"BAD", true}, {L"WORD", false}, {L"NUMBER", false}}) {
    world.open(name, ProMdlType::part);
    EXPECT_EQ(wrong, warns()) << text::toUtf8(name);
  }
  // Windows go with their models, and the first one is empty then.
  const auto closeAll = [&] {
    while (world.session().close() == ProNoError) world.session().settle();
  };
  world.open(L"BAD", ProMdlType::part);
  ASSERT_TRUE(warns());
  closeAll();
  EXPECT_FALSE(warns()) << "no model is current";
  world.open(L"BAD", ProMdlType::part);
  ASSERT_TRUE(warns());
  const std::string image = ui().dialog(headless::kWindowDevice)->image("kvd_parameter_lb");
  EXPECT_TRUE(os::files().exists(text::fromUtf8(image))) << image;
  world.session().unloadPlugin();
  EXPECT_FALSE(warns());
}

}  // namespace
