#include <stdexcept>

#include "creo/ProFileChoose.h"
#include "creo/ProMessage.h"
#include "creo/ProUIInputpanel.h"
#include "creo/ProUITable.h"
#include "creo/ProUITree.h"
#include "headless/proui/ui_fixture.h"

namespace {

using namespace creo;
using headless::Question;

constexpr const char* kRunner = "kvanerunner";

class UiPerson : public test::UiTest {
 protected:
  // Notes each call: "dialog/component ".
  ProUIAction note() {
    return [this](const std::string& dialog, const std::string& component) { ran_ += dialog + "/" + component + " "; };
  }
  std::string taken() { return std::exchange(ran_, {}); }
  std::string ran_;
};

TEST_F(UiPerson, PressingRunsTheActionUnlessTheButtonIsShut) {
  created(kRunner);
  EXPECT_EQ(ProNoError, ui().press(kRunner, "kvaneStart"));  // without an action
  ProUIPushbuttonActivateActionSet(kRunner, "kvaneStart", note());
  ProUILayoutHide(kRunner, "kvaneLayerFoot");
  ProUILayoutMappedUnset(kRunner, "kvaneLayerFoot");
  EXPECT_EQ(ProNoError, ui().press(kRunner, "kvaneStart"));
  EXPECT_EQ("kvanerunner/kvaneStart ", taken());
  ProUIPushbuttonDisable(kRunner, "kvaneStart");
  EXPECT_EQ(ProGeneralError, ui().press(kRunner, "kvaneStart"));
  ProUIPushbuttonEnable(kRunner, "kvaneStart");
  dialog(kRunner).find("kvaneStart", headless::Kind::pushbutton).value->shown = false;
  EXPECT_EQ(ProGeneralError, ui().press(kRunner, "kvaneStart"));
  EXPECT_EQ(ProNotFound, ui().press(kRunner, "kvaneStrat"));
  EXPECT_EQ(ProNotFound, ui().press("kvanerun", "kvaneStart"));
  EXPECT_EQ(ProBadInputs, ui().press(kRunner, "kvaneLogLbl"));
  EXPECT_EQ("", taken());
}

TEST_F(UiPerson, OnlyAPersonsChangeOfACheckRunsItsAction) {
  created(kRunner);
  ProUICheckbuttonActivateActionSet(kRunner, "kvaneInstFilter", note());
  ProUICheckbuttonSet(kRunner, "kvaneInstFilter");
  EXPECT_TRUE(ProUICheckbuttonGetState(kRunner, "kvaneInstFilter").value);
  EXPECT_EQ(ProNoError, ui().setCheck(kRunner, "kvaneInstFilter", true));
  EXPECT_EQ("", taken());
  EXPECT_EQ(ProNoError, ui().setCheck(kRunner, "kvaneInstFilter", false));
  EXPECT_EQ("kvanerunner/kvaneInstFilter ", taken());
  EXPECT_FALSE(dialog(kRunner).checked("kvaneInstFilter"));
  session_.failNext("ProUICheckbuttonSet", ProGeneralError);
  EXPECT_EQ(ProGeneralError, ProUICheckbuttonSet(kRunner, "kvaneInstFilter"));
  EXPECT_FALSE(dialog(kRunner).checked("kvaneInstFilter"));
}

TEST_F(UiPerson, ChoosingSelectsAndRuns) {
  created(kRunner);
  const std::string menu = "kvaneActionlistChooser";
  EXPECT_TRUE(ProUIOptionmenuSelectednamesGet(kRunner, menu).value.empty());
  ProUIOptionmenuSelectActionSet(kRunner, menu, note());
  ProUIOptionmenuNamesSet(kRunner, menu, {"a.xml", "b.xml"});
  EXPECT_EQ(ProBadInputs, ProUIOptionmenuLabelsSet(kRunner, menu, {L"A"}));
  EXPECT_EQ(ProNoError, ProUIOptionmenuLabelsSet(kRunner, menu, {L"A", L"B"}));
  EXPECT_EQ((std::vector<std::string>{"a.xml"}), dialog(kRunner).selected(menu));
  EXPECT_EQ(ProNoError, ProUIOptionmenuSelectednamesSet(kRunner, menu, {"b.xml"}));
  EXPECT_EQ(ProNotFound, ProUIOptionmenuSelectednamesSet(kRunner, menu, {"c.xml"}));
  EXPECT_EQ(ProNotFound, ui().choose(kRunner, menu, "c.xml"));
  EXPECT_EQ("", taken());
  EXPECT_EQ(ProNoError, ui().choose(kRunner, menu, "b.xml"));  // the one that is selected acts too
  EXPECT_EQ("kvanerunner/kvaneActionlistChooser ", taken());
  EXPECT_EQ((std::vector<std::string>{"b.xml"}), ProUIOptionmenuSelectednamesGet(kRunner, menu).value);
}

TEST_F(UiPerson, TypingChangesAPanelAndEnterRunsItsAction) {
  constexpr const char* kQuestion = "kvaneUserVariable";
  created(kQuestion);
  ProUIInputpanelActivateActionSet(kQuestion, "kvaneUVInputPanel", note());
  EXPECT_EQ(ProGeneralError, ui().type(kQuestion, "kvaneUVInputPanel", L"unseen"));
  EXPECT_FALSE(ProUIInputpanelIsVisible(kQuestion, "kvaneUVInputPanel").value);
  ProUIInputpanelShow(kQuestion, "kvaneUVInputPanel");
  EXPECT_EQ(ProNoError, ui().type(kQuestion, "kvaneUVInputPanel", L"seen"));
  EXPECT_EQ("", taken());
  EXPECT_EQ(L"seen", ProUIInputpanelValueGet(kQuestion, "kvaneUVInputPanel").value);
  EXPECT_EQ(ProNoError, ui().pressEnter(kQuestion, "kvaneUVInputPanel"));
  EXPECT_EQ("kvaneUserVariable/kvaneUVInputPanel ", taken());
  EXPECT_EQ(ProBadInputs, ui().pressEnter(kQuestion, "kvaneUVCheck"));
}

TEST_F(UiPerson, FileNamesComeApart) {
  const struct {
    const wchar_t *path, *directory, *name, *extension;
    int version;
  } rows[] = {
      {L"d:/parts/bracket.prt.12", L"d:\\parts\\", L"bracket", L"prt", 12},
      {L"a.b.csv", L"", L"a.b", L"csv", 0},
      {L"d:\\parts\\", L"d:\\parts\\", L"", L"", 0},
      {L"name.3", L"", L"name", L"3", 0},
      {L"", L"", L"", L"", 0},
  };
  for (const auto& row : rows) {
    const ProFilename parts = ProFilenameParse(row.path);
    EXPECT_EQ(row.directory, parts.directory) << row.path;
    EXPECT_EQ(row.name, parts.name) << row.path;
    EXPECT_EQ(row.extension, parts.extension) << row.path;
    EXPECT_EQ(row.version, parts.version) << row.path;
  }
}

TEST_F(UiPerson, NodesReactByTheirEvent) {
  created(kRunner);
  const std::string tree = "kvaneLogTT";
  ProUITreeNodeAdd(kRunner, tree, "", "root", L"Log", "kvaneParent");
  ProUITreeNodeAdd(kRunner, tree, "root", "n0", L"step", "kvaneChildChk");
  ProUITreeActionSet(kRunner, tree, ProUITreeEvent::select, note());
  EXPECT_EQ(ProNotFound, ProUITreeTreeexpcolnodeGet(kRunner, tree).error);
  EXPECT_EQ(ProNoError, ui().onNode(kRunner, tree, "root", ProUITreeEvent::expand));
  EXPECT_FALSE(ProUITreeNodeIsExpanded(kRunner, tree, "root").value) << "without an action nothing opens";
  EXPECT_EQ("", taken());
  ProUITreeActionSet(kRunner, tree, ProUITreeEvent::expand,
                     [](const std::string& dialog, const std::string& component) {
                       ProUITreeNodeExpand(dialog, component, ProUITreeTreeexpcolnodeGet(dialog, component).value);
                     });
  ui().onNode(kRunner, tree, "root", ProUITreeEvent::expand);
  EXPECT_TRUE(ProUITreeNodeIsExpanded(kRunner, tree, "root").value);
  ui().onNode(kRunner, tree, "root", ProUITreeEvent::select);
  ui().onNode(kRunner, tree, "n0", ProUITreeEvent::select);
  EXPECT_EQ("kvanerunner/kvaneLogTT kvanerunner/kvaneLogTT ", taken());
  EXPECT_EQ((std::vector<std::string>{"n0"}), ProUITreeSelectednamesGet(kRunner, tree).value);
  EXPECT_EQ(ProNotFound, ui().onNode(kRunner, tree, "n1", ProUITreeEvent::select));
  ProUITreeHide(kRunner, tree);
  EXPECT_EQ(ProGeneralError, ui().onNode(kRunner, tree, "n0", ProUITreeEvent::select));
}

TEST_F(UiPerson, ModelessDialogsReturnAtOnceAndStay) {
  created(kRunner);
  ProUIDialogCloseActionSet(kRunner, note());
  const auto activated = ProUIDialogActivate(kRunner);
  EXPECT_TRUE(activated && activated.value == 0);
  EXPECT_TRUE(dialog(kRunner).active && dialog(kRunner).visible);
  EXPECT_TRUE(ui().questions().empty());
  ProUIDialogHide(kRunner);
  EXPECT_FALSE(dialog(kRunner).visible);
  EXPECT_EQ(ProNoError, ui().close(kRunner));
  EXPECT_EQ("kvanerunner/ ", taken());
}

TEST_F(UiPerson, ModalDialogsBlockUntilTheyAreExited) {
  created("kvanehistory", false);
  const auto exitBy = [](int status) {
    return [status](const std::string& dialog, const std::string&) { ProUIDialogExit(dialog, status); };
  };
  ProUIPushbuttonActivateActionSet("kvanehistory", "kvaneHistoryOkBtn", exitBy(7));
  ProUIDialogCloseActionSet("kvanehistory", exitBy(3));
  EXPECT_EQ(3, ProUIDialogActivate("kvanehistory").value);  // nobody answers: its cross
  ui().answerQuestions([&](const Question& question) {
    EXPECT_EQ("kvanehistory", question.dialog);
    EXPECT_TRUE(dialog("kvanehistory").visible);
    EXPECT_EQ(ProGeneralError, ProUIDialogActivate("kvanehistory").error);  // it is open
    return ui().press("kvanehistory", "kvaneHistoryOkBtn");
  });
  EXPECT_EQ(7, ProUIDialogActivate("kvanehistory").value);
  EXPECT_FALSE(dialog("kvanehistory").active || dialog("kvanehistory").visible);
  EXPECT_EQ(2U, ui().questions().size());

  ui().answerQuestions(nullptr);
  ProUIDialogCloseActionSet("kvanehistory", note());
  EXPECT_EQ(ProGeneralError, ProUIDialogActivate("kvanehistory").error);
  EXPECT_EQ(std::vector<std::wstring>{L"dialog 'kvanehistory': its close action doesn't end it"}, session_.messages());
}

TEST_F(UiPerson, MessageDialogsTakeTheAnswersButton) {
  const std::vector<std::wstring> buttons{L"Yes", L"No"};
  EXPECT_EQ(0, ProUIMessageDialogDisplay(L"Warning", L"Sure?", buttons).value);
  int answer = 1;
  ui().answerQuestions([&](const Question&) { return answer; });
  EXPECT_EQ(1, ProUIMessageDialogDisplay(L"Warning", L"Sure?", buttons).value);
  answer = 2;  // there is no third button
  EXPECT_EQ(0, ProUIMessageDialogDisplay(L"Warning", L"S&ure && s&&&&fe?&", buttons).value);
  EXPECT_EQ(ProBadInputs, ProUIMessageDialogDisplay(L"Warning", L"Sure?", {}).error);
  EXPECT_EQ(L"Sure & s&&fe?", ui().questions().back().text) << "a doubled one is shown, another marks a letter";
}

TEST_F(UiPerson, ActionsMayDestroyTheirDialog) {
  const auto destroy = [this](const std::string& dialog, const std::string& component) {
    ProUIPushbuttonActivateActionSet(dialog, component, note());  // takes the running action's own place
    EXPECT_EQ(ProNoError, ProUIDialogDestroy(dialog));
    ran_ += component;  // both names outlive the dialog
    ran_ += dialog;
  };
  created(kRunner);
  ProUIPushbuttonActivateActionSet(kRunner, "kvaneCancel", destroy);
  EXPECT_EQ(ProNoError, ui().press(kRunner, "kvaneCancel"));
  EXPECT_EQ("kvaneCancelkvanerunner", taken());
  EXPECT_EQ(nullptr, ui().dialog(kRunner));

  created("kvanefilter", false);
  ProUIDialogCloseActionSet("kvanefilter", [](const std::string& dialog, const std::string&) {
    ProUIDialogExit(dialog, 4);
    ProUIDialogDestroy(dialog);
  });
  EXPECT_EQ(4, ProUIDialogActivate("kvanefilter").value);
  EXPECT_TRUE(ui().dialogs().empty());
}

TEST_F(UiPerson, AnExceptionOfAnActionIsALineOfTheMessageArea) {
  created(kRunner);
  ProUIPushbuttonActivateActionSet(kRunner, "kvaneStart",
                                   [](const std::string&, const std::string&) { throw std::runtime_error("broken"); });
  EXPECT_EQ(ProGeneralError, ui().press(kRunner, "kvaneStart"));
  EXPECT_EQ(std::vector<std::wstring>{L"the action of 'kvaneStart' in dialog 'kvanerunner' ended with an exception: "
                                      L"broken"},
            session_.messages());
}

TEST_F(UiPerson, ProgressIsToldToTheObserver) {
  struct : headless::SessionObserver {
    void progress(int value, int maximum) override {
      told += std::to_string(value) + "/" + std::to_string(maximum) + " ";
    }
    std::string told;
  } observer;
  session_.observe(&observer);
  created(kRunner);
  const std::string bar = "kvaneProgressBar";
  EXPECT_EQ(ProNoError, ProUIProgressbarMaxintegerSet(kRunner, bar, 5));
  for (const int value : {0, 3, 5}) EXPECT_EQ(ProNoError, ProUIProgressbarIntegerSet(kRunner, bar, value));
  EXPECT_EQ(ProBadInputs, ProUIProgressbarIntegerSet(kRunner, bar, 6));
  EXPECT_EQ(ProNoError, ProUIProgressbarMaxintegerSet(kRunner, bar, 2));  // a smaller run after a larger one
  EXPECT_EQ(2, dialog(kRunner).progress(bar).value);
  EXPECT_EQ(ProBadInputs, ProUIProgressbarMinintegerSet(kRunner, bar, 3));
  EXPECT_EQ("0/5 3/5 5/5 ", observer.told);
  session_.observe(nullptr);
}

// Every operation on a component, with a component of its kind and one of another.
TEST_F(UiPerson, OperationsTellWrongNamesFromWrongKinds) {
  using Action = std::function<ProError(const std::string&, const std::string&)>;
  using S = const std::string&;
  const struct {
    const char* operation;
    const char* component;
    Action action;
  } rows[] = {
      {"ProUIPushbuttonActivateActionSet", "kvaneStart",
       [&](S d, S c) { return ProUIPushbuttonActivateActionSet(d, c, note()); }},
      {"ProUIPushbuttonEnable", "kvaneStart", [](S d, S c) { return ProUIPushbuttonEnable(d, c); }},
      {"ProUIPushbuttonDisable", "kvaneStart", [](S d, S c) { return ProUIPushbuttonDisable(d, c); }},
      {"ProUIPushbuttonBitmapSet", "kvaneStart", [](S d, S c) { return ProUIPushbuttonBitmapSet(d, c, "help.png"); }},
      {"ProUICheckbuttonActivateActionSet", "kvaneInfo",
       [&](S d, S c) { return ProUICheckbuttonActivateActionSet(d, c, note()); }},
      {"ProUICheckbuttonSet", "kvaneInfo", [](S d, S c) { return ProUICheckbuttonSet(d, c); }},
      {"ProUICheckbuttonUnset", "kvaneInfo", [](S d, S c) { return ProUICheckbuttonUnset(d, c); }},
      {"ProUICheckbuttonGetState", "kvaneInfo", [](S d, S c) { return ProUICheckbuttonGetState(d, c).error; }},
      {"ProUIOptionmenuNamesSet", "kvaneKVZChooser", [](S d, S c) { return ProUIOptionmenuNamesSet(d, c, {"a"}); }},
      {"ProUIOptionmenuNamesGet", "kvaneKVZChooser", [](S d, S c) { return ProUIOptionmenuNamesGet(d, c).error; }},
      {"ProUIOptionmenuLabelsSet", "kvaneKVZChooser", [](S d, S c) { return ProUIOptionmenuLabelsSet(d, c, {L"A"}); }},
      {"ProUIOptionmenuSelectednamesSet", "kvaneKVZChooser",
       [](S d, S c) { return ProUIOptionmenuSelectednamesSet(d, c, {"a"}); }},
      {"ProUIOptionmenuSelectednamesGet", "kvaneKVZChooser",
       [](S d, S c) { return ProUIOptionmenuSelectednamesGet(d, c).error; }},
      {"ProUIOptionmenuSelectActionSet", "kvaneKVZChooser",
       [&](S d, S c) { return ProUIOptionmenuSelectActionSet(d, c, note()); }},
      {"ProUILabelTextSet", "kvaneLogLbl", [](S d, S c) { return ProUILabelTextSet(d, c, L"Log"); }},
      {"ProUILabelBitmapGet", "kvaneLogLbl", [](S d, S c) { return ProUILabelBitmapGet(d, c).error; }},
      {"ProUIProgressbarMinintegerSet", "kvaneProgressBar",
       [](S d, S c) { return ProUIProgressbarMinintegerSet(d, c, 0); }},
      {"ProUIProgressbarMaxintegerSet", "kvaneProgressBar",
       [](S d, S c) { return ProUIProgressbarMaxintegerSet(d, c, 9); }},
      {"ProUIProgressbarIntegerSet", "kvaneProgressBar", [](S d, S c) { return ProUIProgressbarIntegerSet(d, c, 1); }},
      {"ProUITextareaValueGet", "kvaneLogTA", [](S d, S c) { return ProUITextareaValueGet(d, c).error; }},
      {"ProUITextareaValueSet", "kvaneLogTA", [](S d, S c) { return ProUITextareaValueSet(d, c, L"line"); }},
      {"ProUILayoutShow", "kvaneLayerLog", [](S d, S c) { return ProUILayoutShow(d, c); }},
      {"ProUILayoutHide", "kvaneLayerLog", [](S d, S c) { return ProUILayoutHide(d, c); }},
      {"ProUILayoutMappedSet", "kvaneLayerLog", [](S d, S c) { return ProUILayoutMappedSet(d, c); }},
      {"ProUILayoutMappedUnset", "kvaneLayerLog", [](S d, S c) { return ProUILayoutMappedUnset(d, c); }},
      {"ProUITableRownamesGet", "LargeTable", [](S d, S c) { return ProUITableRownamesGet(d, c).error; }},
      {"ProUITableRowsInsert", "LargeTable", [](S d, S c) { return ProUITableRowsInsert(d, c, "", {"A.PRT"}); }},
      {"ProUITableCellComponentCopy", "LargeTable",
       [](S d, S c) { return ProUITableCellComponentCopy(d, c, "A.PRT", "2", "kvanePrtLbl", "a"); }},
      {"ProUITableCellComponentDelete", "LargeTable",
       [](S d, S c) { return ProUITableCellComponentDelete(d, c, "A.PRT", "2"); }},
      {"ProUITableCellLabelSet", "LargeTable",
       [](S d, S c) { return ProUITableCellLabelSet(d, c, "A.PRT", "3", L"A"); }},
      {"ProUITableColumnLabelSet", "LargeTable", [](S d, S c) { return ProUITableColumnLabelSet(d, c, "4", L"MASS"); }},
      {"ProUITableColumnWidthSet", "LargeTable", [](S d, S c) { return ProUITableColumnWidthSet(d, c, "4", 10); }},
      {"ProUITableSelectednamesGet", "LargeTable", [](S d, S c) { return ProUITableSelectednamesGet(d, c).error; }},
      {"ProUITableRowsDelete", "LargeTable", [](S d, S c) { return ProUITableRowsDelete(d, c, {"A.PRT"}); }},
      {"ProUITreeNodeAdd", "kvaneLogTT", [](S d, S c) { return ProUITreeNodeAdd(d, c, "", "n", L"N", "kvaneParent"); }},
      {"ProUITreeNodeTypeGet", "kvaneLogTT", [](S d, S c) { return ProUITreeNodeTypeGet(d, c, "n").error; }},
      {"ProUITreeNodeTypeSet", "kvaneLogTT", [](S d, S c) { return ProUITreeNodeTypeSet(d, c, "n", "kvaneChild"); }},
      {"ProUITreeNodeExpand", "kvaneLogTT", [](S d, S c) { return ProUITreeNodeExpand(d, c, "n"); }},
      {"ProUITreeNodeCollapse", "kvaneLogTT", [](S d, S c) { return ProUITreeNodeCollapse(d, c, "n"); }},
      {"ProUITreeNodeIsExpanded", "kvaneLogTT", [](S d, S c) { return ProUITreeNodeIsExpanded(d, c, "n").error; }},
      {"ProUITreeSelectednamesGet", "kvaneLogTT", [](S d, S c) { return ProUITreeSelectednamesGet(d, c).error; }},
      {"ProUITreeAllnodesDeselect", "kvaneLogTT", [](S d, S c) { return ProUITreeAllnodesDeselect(d, c); }},
      {"ProUITreeShow", "kvaneLogTT", [](S d, S c) { return ProUITreeShow(d, c); }},
      {"ProUITreeHide", "kvaneLogTT", [](S d, S c) { return ProUITreeHide(d, c); }},
      {"ProUITreeTreeredrawSet", "kvaneLogTT", [](S d, S c) { return ProUITreeTreeredrawSet(d, c, true); }},
      {"ProUITreeActionSet", "kvaneLogTT",
       [&](S d, S c) { return ProUITreeActionSet(d, c, ProUITreeEvent::select, note()); }},
      {"ProUITreeNodeDelete", "kvaneLogTT", [](S d, S c) { return ProUITreeNodeDelete(d, c, "n"); }},
  };
  created(kRunner);
  for (const auto& row : rows) {
    EXPECT_EQ(ProNotFound, row.action("kvanerun", row.component)) << row.operation;
    EXPECT_EQ(ProNotFound, row.action(kRunner, "kvaneNone")) << row.operation;
    EXPECT_EQ(ProBadInputs, row.action(kRunner, "MenuRMBLog")) << row.operation;
    EXPECT_EQ(ProNoError, row.action(kRunner, row.component)) << row.operation;
    session_.failNext(row.operation, ProUnattachedFeats);  // the name under which it is counted
    EXPECT_EQ(ProUnattachedFeats, row.action(kRunner, row.component)) << row.operation;
  }
}

}  // namespace
