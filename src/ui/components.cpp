#include "ui/components.h"

#include <string>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "documents/server_workspace.h"
#include "os/surroundings.h"
#include "run/check_out.h"
#include "run/choosers.h"
#include "run/model_table.h"
#include "run/row_name.h"
#include "run/run.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "ui/filter_dialog.h"
#include "ui/help.h"
#include "ui/highlight.h"
#include "ui/history_dialog.h"
#include "ui/info_dialog.h"
#include "ui/list_print.h"
#include "ui/log_tree.h"
#include "ui/sides.h"

namespace ui {
namespace {

using namespace core;
using namespace creo;

const std::string& dialog() { return pluginState().dialogName; }

constexpr const char *kPackages = "kvaneKVZChooser", *kLists = "kvaneActionlistChooser",
                     *kHistory = "kvaneWriteExtData";

bool isSet(const char* button) { return ProUICheckbuttonGetState(dialog(), button).value; }

std::string chosen(const char* menu) { return run::chosenName(dialog(), menu); }

bool choosePackage() {
  const std::string name = chosen(kPackages);
  pluginState().currentKvz = text::fromUtf8(name);
  return run::selectPackage(name) == 0;
}

void chooseList() { run::selectActionList(chosen(kLists)); }

void chooseLogLevel() {
  pluginState().loglevel = text::parseInt(chosen("kvaneLayerLogFilterChooser"));
  logClearView();
  logReopenForRendering();
  logRender();
}

void setAllRows(bool on) {
  const auto rows = ProUITableRownamesGet(dialog(), run::kModelTable);
  for (const std::string& row : rows.value) {
    if (on) {
      ProUICheckbuttonSet(dialog(), row + "_cb");
    } else {
      ProUICheckbuttonUnset(dialog(), row + "_cb");
    }
  }
}

// Of the chosen rows those of checked-out models stay; none is chosen that wasn't.
void keepCheckedOutRows() {
  if (pluginState().noPdmServerInformations == 1) creoLog(std::wstring(L"<KVD> ") + run::kNoServerLabels);
  const auto rows = ProUITableRownamesGet(dialog(), run::kModelTable);
  for (const std::string& row : rows.value) {
    if (!run::showsCheckedOut(row)) ProUICheckbuttonUnset(dialog(), row + "_cb");
  }
}

void setRow(ProMdl model) {
  const std::string row = run::rowName(ProMdlNameGet(model).value, ProMdlTypeGet(model).value);
  ProUICheckbuttonSet(dialog(), row + "_cb");
}

void setCurrentRow() {
  if (const auto model = ProMdlCurrentGet()) setRow(model.value);
}

void setRowsOfDrawing() {
  const auto drawing = ProMdlCurrentGet();
  if (!drawing || ProMdlTypeGet(drawing.value).value != ProMdlType::drawing) return;
  for (const ProMdl solid : ProDrawingSolidsCollect(drawing.value).value) setRow(solid);
}

// They look like check buttons, but nothing stays on.
void pressHelp() {
  openHelp();
  ProUICheckbuttonUnset(dialog(), "kvaneHelp");
}
void pressInfo() {
  ProUICheckbuttonUnset(dialog(), "kvaneInfo");
  openInfoDialog();
}

void switchHistory() { pluginState().writeExtData = isSet(kHistory) ? 1 : 0; }
void showHistorySwitch(bool on) {
  if (on) {
    ProUICheckbuttonSet(dialog(), kHistory);
  } else {
    ProUICheckbuttonUnset(dialog(), kHistory);
  }
}

void include(int PluginState::*what) {
  pluginState().*what = 1;
  run::refreshModelTable();
}

struct ButtonAction {
  const char* button;
  void (*action)();
  const char* fault = nullptr;  // its name in the line of a failure; none: the button's
};

constexpr ButtonAction kPushbuttons[] = {
    {"kvaneStart", run::startRun},
    {"kvaneCheckout", run::checkOutSelected},
    {"kvaneExtFilter", openFilterDialog},
    {"kvaneShowLog", [] { showLogSide(pluginState().logVisible == 0); }, "showandhideLog"},
    {"kvaneShowLog_show", [] { showLogSide(true); }, "showandhideLog"},
    {"kvaneShowLog_hide", [] { showLogSide(false); }, "showandhideLog"},
    {"kvaneShowTree", [] { showTableSide(pluginState().treeVisible == 0); }, "showandhideTree"},
    {"kvaneShowTree_show", [] { showTableSide(true); }, "showandhideTree"},
    {"kvaneShowTree_hide", [] { showTableSide(false); }, "showandhideTree"},
    {"kvaneActivateAutoclose", [] { pluginState().autoclose = 1; }},
    {"kvaneOpenLogFolder", [] { os::processes().open(pluginState().tempPath); }},
    {"kvaneActionlistPrint", printActionList},
    {"LoadFileBtn_MenuRMBLog", openNodesModel},
    {"HighlightFileBtn_MenuRMBLog", highlightNodesModel},
    {"HighlightFileBtn_MenuRMBChooser", highlightMarkedRows},
    {"HighlightSelectedBtn_MenuRMBChooser", highlightChosenRows},
    {"SelectAllBtn_MenuRMBChooser", [] { setAllRows(true); }},
    {"SelectOnlyPDMBtn_MenuRMBChooser", keepCheckedOutRows},
    {"SelectNoneBtn_MenuRMBChooser", [] { setAllRows(false); }},
    {"HistoryBtn_MenuRMBChooser", openHistoryDialog},
    {"AddCurrentBtn_MenuRMBChooser", setCurrentRow},
    {"AddAllDrawingMdlsBtn_MenuRMBChooser", setRowsOfDrawing},
    {"AddAllInstancesBtn_MenuRMBChooser", [] { include(&PluginState::addInstances); }},
    {"AddAllDrawingsBtn_MenuRMBChooser", [] { include(&PluginState::addDrawings); }},
    {"AddAllInheritedBtn_MenuRMBChooser", [] { include(&PluginState::addInherited); }},
};

constexpr ButtonAction kCheckbuttons[] = {
    {"kvanePrtFilter", run::refreshModelTable},
    {"kvaneAsmFilter", run::refreshModelTable},
    {"kvaneDrwFilter", run::refreshModelTable},
    {"kvaneInstFilter", run::refreshModelTable},
    {"kvaneCurModFilter", run::refreshModelTable},
    {"kvaneInfo", pressInfo},
    {"kvaneHelp", pressHelp},
    {kHistory, switchHistory},
};

void report(ProError error, const std::string& what) {
  if (error != ProNoError) creoLog(L"<KVD> main - Error at set " + text::fromUtf8(what));
}

// An action for a component: a plain function, whatever component it hangs on.
ProUIAction calls(void (*action)()) {
  return [action](const std::string&, const std::string&) { action(); };
}

void setStartStates() {
  const PluginState& state = pluginState();
  run::setTypeFilters(state.filterPrt != 0, state.filterAsm != 0, state.filterDrw != 0, state.filterInst != 0,
                      state.filterCurmod != 0);
  showHistorySwitch(state.writeExtData == 1);
  ProUIProgressbarMinintegerSet(dialog(), "kvaneProgressBar", 0);
  ProUIProgressbarIntegerSet(dialog(), "kvaneProgressBar", 0);
  const auto setState = documents::activeWorkspace() ? &ProUIPushbuttonEnable : &ProUIPushbuttonDisable;
  report(setState(dialog(), "kvaneCheckout"), "kvaneCheckout");
}

struct ColumnWidth {
  const char* column;
  int withParameter, without;
};

// With a parameter shown, its column takes room from the others.
void prepareColumns() {
  const PluginState& state = pluginState();
  const bool shown = !state.columnParameter.empty();
  ProUITableColumnLabelSet(dialog(), run::kModelTable, "4", state.columnParameter);
  ProUITableColumnWidthSet(dialog(), run::kModelTable, "4", shown ? state.columnParameterWidth : 0);
  for (const ColumnWidth& width : {ColumnWidth{"1", 4, 6}, ColumnWidth{"2", 2, 4}, ColumnWidth{"5", 4, 6}}) {
    ProUITableColumnWidthSet(dialog(), run::kModelTable, width.column, shown ? width.withParameter : width.without);
  }
}

}  // namespace

void prepareMainDialog(void (*close)()) {
  ProUIDialogBitmapSet(dialog(), "kvanetool.png");
  report(ProUIDialogCloseActionSet(dialog(), calls(close)), dialog());
  report(ProUIPushbuttonActivateActionSet(dialog(), "kvaneCancel", calls(close)), "kvaneCancel");
  for (const ButtonAction& row : kPushbuttons) {
    report(ProUIPushbuttonActivateActionSet(dialog(), row.button, calls(row.action)),
           row.fault ? row.fault : row.button);
  }
  for (const ButtonAction& row : kCheckbuttons) {
    report(ProUICheckbuttonActivateActionSet(dialog(), row.button, calls(row.action)), row.button);
  }
  setStartStates();
  prepareLogTree();
  prepareColumns();
}

void connectChoosers() {
  struct Chooser {
    const char* menu;
    void (*action)();
    const wchar_t* fault;
  };
  constexpr Chooser kChoosers[] = {
      {kPackages, [] { choosePackage(); }, L"<KVD> main - Error at add KVZ Optionmenu Action"},
      {kLists, chooseList, L"<KVD> main - Error at add Actionlist Optionmenu Action"},
      {"kvaneLayerLogFilterChooser", chooseLogLevel, L"<KVD> main - Error at add Loglist Optionmenu Action"},
  };
  for (const Chooser& row : kChoosers) {
    if (ProUIOptionmenuSelectActionSet(dialog(), row.menu, calls(row.action)) != ProNoError) creoLog(row.fault);
  }
}

bool takePackage(const std::string& name) {
  return ProUIOptionmenuSelectednamesSet(dialog(), kPackages, {name}) == ProNoError && choosePackage();
}

void takeList(const std::string& name) {
  ProUIOptionmenuSelectednamesSet(dialog(), kLists, {name});
  chooseList();
}

void setHistoryButton(bool on) {
  showHistorySwitch(on);
  switchHistory();
}

}  // namespace ui
