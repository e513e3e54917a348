#include "ui/components.h"

#include <string>

#include "core/log.h"
#include "core/log_view.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProServer.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "creo/ProUITree.h"
#include "documents/package.h"
#include "engine/model_table.h"
#include "engine/row_name.h"
#include "engine/run.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "ui/filter_dialog.h"
#include "ui/history_dialog.h"
#include "ui/main_dialog.h"

namespace ui {
namespace {

using namespace core;
using namespace creo;

const std::string& dialog() { return pluginState().dialogName; }

bool isSet(const char* button) { return ProUICheckbuttonGetState(dialog(), button).value; }

std::string chosen(const char* menu) {
  const auto names = ProUIOptionmenuSelectednamesGet(dialog(), menu);
  return names && !names.value.empty() ? names.value.front() : std::string();
}

void choosePackage() {
  const std::string name = chosen("kvaneKVZChooser");
  pluginState().currentKvz = text::fromUtf8(name);
  documents::selectPackage(name);
}

void chooseList() { documents::selectActionList(chosen("kvaneActionlistChooser")); }

void chooseLogLevel() {
  pluginState().loglevel = text::parseInt(chosen("kvaneLayerLogFilterChooser"));
  logClearView();
  logReopenForRendering();
  logRender();
}

void setAllRows(bool on) {
  const auto rows = ProUITableRownamesGet(dialog(), engine::kModelTable);
  for (const std::string& row : rows.value) {
    if (on) {
      ProUICheckbuttonSet(dialog(), row + "_cb");
    } else {
      ProUICheckbuttonUnset(dialog(), row + "_cb");
    }
  }
}

// Rows of models in a workspace stay as they are set; those from the disk are unset.
void setOnlyServerRows() {
  const auto rows = ProUITableRownamesGet(dialog(), engine::kModelTable);
  for (const std::string& row : rows.value) {
    const std::string image = ProUILabelBitmapGet(dialog(), row + "_wc").value;
    if (image == "checkedout.gif") ProUICheckbuttonSet(dialog(), row + "_cb");
    if (image == "fromHDD.gif") ProUICheckbuttonUnset(dialog(), row + "_cb");
  }
}

void setCurrentRow() {
  const auto model = ProMdlCurrentGet();
  if (!model) return;
  const std::string row = engine::rowName(ProMdlNameGet(model.value).value, ProMdlTypeGet(model.value).value);
  ProUICheckbuttonSet(dialog(), row + "_cb");
}

void include(int PluginState::*what) {
  pluginState().*what = 1;
  engine::refreshModelTable();
}

struct ButtonAction {
  const char* button;
  void (*action)();
};

constexpr ButtonAction kPushbuttons[] = {
    {"kvaneStart", engine::startRun},
    {"kvaneCancel", toolClose},
    {"kvaneCheckout", engine::checkOutSelected},
    {"kvaneExtFilter", openFilterDialog},
    {"kvaneShowLog", [] { showLogSide(pluginState().logVisible == 0); }},
    {"kvaneShowLog_show", [] { showLogSide(true); }},
    {"kvaneShowLog_hide", [] { showLogSide(false); }},
    {"kvaneShowTree", [] { showTableSide(pluginState().treeVisible == 0); }},
    {"kvaneShowTree_show", [] { showTableSide(true); }},
    {"kvaneShowTree_hide", [] { showTableSide(false); }},
    {"kvaneActivateAutoclose", [] { pluginState().autoclose = 1; }},
    {"kvaneOpenLogFolder", [] { os::processes().open(pluginState().tempPath); }},
    {"SelectAllBtn_MenuRMBChooser", [] { setAllRows(true); }},
    {"SelectOnlyPDMBtn_MenuRMBChooser", setOnlyServerRows},
    {"SelectNoneBtn_MenuRMBChooser", [] { setAllRows(false); }},
    {"HistoryBtn_MenuRMBChooser", openHistoryDialog},
    {"AddCurrentBtn_MenuRMBChooser", setCurrentRow},
    {"AddAllInstancesBtn_MenuRMBChooser", [] { include(&PluginState::addInstances); }},
    {"AddAllDrawingsBtn_MenuRMBChooser", [] { include(&PluginState::addDrawings); }},
    {"AddAllInheritedBtn_MenuRMBChooser", [] { include(&PluginState::addInherited); }},
};

constexpr ButtonAction kCheckbuttons[] = {
    {"kvanePrtFilter", engine::refreshModelTable},
    {"kvaneAsmFilter", engine::refreshModelTable},
    {"kvaneDrwFilter", engine::refreshModelTable},
    {"kvaneInstFilter", engine::refreshModelTable},
    {"kvaneCurModFilter", engine::refreshModelTable},
    {"kvaneWriteExtData", [] { pluginState().writeExtData = isSet("kvaneWriteExtData") ? 1 : 0; }},
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
  engine::setTypeFilters(state.filterPrt != 0, state.filterAsm != 0, state.filterDrw != 0, state.filterInst != 0,
                         state.filterCurmod != 0);
  if (state.writeExtData == 1) {
    ProUICheckbuttonSet(dialog(), "kvaneWriteExtData");
  } else {
    ProUICheckbuttonUnset(dialog(), "kvaneWriteExtData");
  }
  ProUIProgressbarMinintegerSet(dialog(), "kvaneProgressBar", 0);
  ProUIProgressbarIntegerSet(dialog(), "kvaneProgressBar", 0);
  const bool server = static_cast<bool>(ProServerActiveGet());
  report(server ? ProUIPushbuttonEnable(dialog(), "kvaneCheckout") : ProUIPushbuttonDisable(dialog(), "kvaneCheckout"),
         "kvaneCheckout");
}

void prepareLogTree() {
  ProUITreeNodeAdd(dialog(), "kvaneLogTT", "", "kvaneRootNode", L"Log", "kvaneParent");
  ProUITreeNodeExpand(dialog(), "kvaneLogTT", "kvaneRootNode");
  ProUITreeAllnodesDeselect(dialog(), "kvaneLogTT");
  ProUITreeTreeredrawSet(dialog(), "kvaneLogTT", true);
}

struct ColumnWidth {
  const char* column;
  int withParameter, without;
};

// With a parameter shown, its column takes room from the others.
void prepareColumns() {
  const PluginState& state = pluginState();
  const bool shown = !state.columnParameter.empty();
  ProUITableColumnLabelSet(dialog(), engine::kModelTable, "4", state.columnParameter);
  ProUITableColumnWidthSet(dialog(), engine::kModelTable, "4", shown ? state.columnParameterWidth : 0);
  for (const ColumnWidth& width : {ColumnWidth{"1", 4, 6}, ColumnWidth{"2", 2, 4}, ColumnWidth{"5", 4, 6}}) {
    ProUITableColumnWidthSet(dialog(), engine::kModelTable, width.column, shown ? width.withParameter : width.without);
  }
}

// Maps or unmaps the layout of a side; hidden first, shown last.
void mapSide(const char* layout, bool show) {
  if (show) {
    ProUILayoutShow(dialog(), layout);
    ProUILayoutMappedSet(dialog(), layout);
  } else {
    ProUILayoutMappedUnset(dialog(), layout);
    ProUILayoutHide(dialog(), layout);
  }
}

}  // namespace

void prepareMainDialog() {
  ProUIDialogBitmapSet(dialog(), "kvanetool.png");
  report(ProUIDialogCloseActionSet(dialog(), calls(toolClose)), dialog());
  for (const ButtonAction& row : kPushbuttons) {
    report(ProUIPushbuttonActivateActionSet(dialog(), row.button, calls(row.action)), row.button);
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
      {"kvaneKVZChooser", choosePackage, L"<KVD> main - Error at add KVZ Optionmenu Action"},
      {"kvaneActionlistChooser", chooseList, L"<KVD> main - Error at add Actionlist Optionmenu Action"},
      {"kvaneLayerLogFilterChooser", chooseLogLevel, L"<KVD> main - Error at add Loglist Optionmenu Action"},
  };
  for (const Chooser& row : kChoosers) {
    if (ProUIOptionmenuSelectActionSet(dialog(), row.menu, calls(row.action)) != ProNoError) creoLog(row.fault);
  }
}

void showLogSide(bool show) {
  mapSide("kvaneLayerLog", show);
  pluginState().logVisible = show ? 1 : 0;
}

void showTableSide(bool show) {
  mapSide("kvaneLayerLeft", show);
  pluginState().treeVisible = show ? 1 : 0;
}

}  // namespace ui
