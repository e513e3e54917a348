#include "ui/main_dialog.h"

#include <string>

#include "core/dialogs.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "creo/ProMacro.h"
#include "creo/ProUI.h"
#include "creo/ProWindow.h"
#include "os/surroundings.h"
#include "run/choosers.h"
#include "run/model_table.h"
#include "run/run.h"
#include "run/triggers.h"
#include "text/format.h"
#include "ui/components.h"
#include "ui/filter_dialog.h"
#include "ui/sides.h"

namespace ui {
namespace {

using namespace core;
using namespace creo;

constexpr const char* kDialog = "kvanerunner";

const std::string& dialog() { return pluginState().dialogName; }

void writeWelcome() {
  logMsgPlain(Message::welcome, kTitle);
  logWrite(L"", kTitle);
  for (const Message step : {Message::selectModels, Message::selectPackage, Message::startProcess})
    logMsgPlain(step, kTitle);
  logWrite(L"", kTitle);
}

// Shows the log that was written so far, by the level that the settings name.
void showLog() {
  ProUIOptionmenuSelectednamesSet(dialog(), "kvaneLayerLogFilterChooser", {std::to_string(pluginState().loglevel)});
  logReopenForRendering();
  if (pluginState().triggerType == 0) logRender();
}

// A trigger's dialog stays hidden unless its setting shows it; without graphics there is nobody to show one to.
void activateDialog() {
  PluginState& state = pluginState();
  creoLog(L"Activate Dialog", kDebug);
  const bool byTrigger = state.triggerType != 0;
  if (byTrigger && state.triggers[static_cast<std::size_t>(state.triggerType - 1)].startShowUI != 1) return;
  if (!byTrigger && state.workerMode) return;
  state.triggerType = 0;
  if (!ProUIDialogActivate(dialog())) creoLog(L"<KVD> main - Error at ProUIDialogActivate");
}

void endDialog(const std::string& name) {
  ProUIDialogExit(name, 0);
  ProUIDialogDestroy(name);
}

// Creo's own view as it was before the tool covered it.
void repaintCreo() {
  const auto window = ProWindowCurrentGet();
  if (!window || pluginState().triggerType != 0 || pluginState().autoclose != 0) return;
  ProWindowRepaint(window.value);
  ProWindowActivate(window.value);
  ProMacroLoad(L"~ Command `ProCmdViewRepaint`;");
}

// False without its resource.
bool createDialog() {
  creoProgress(L"<KVD> create dialog");
  if (core::createDialog(dialog(), kDialog) != ProNoError) return false;
  for (const ProUIDialogTrait trait :
       {ProUIDialogTrait::modeless, ProUIDialogTrait::keepsLayout, ProUIDialogTrait::keepsPosition,
        ProUIDialogTrait::keepsSize, ProUIDialogTrait::resizable}) {
    ProUIDialogTraitSet(dialog(), trait, true);
  }
  ProUIDialogTitleSet(dialog(), L"Kelvane User - " + pluginState().version);
  return true;
}

void toggleSides() {
  creoProgress(L"<KVD> show and hide Log / Tree");
  showLogSide(pluginState().logVisible == 0);
  showTableSide(pluginState().treeVisible == 0);
}

}  // namespace

int toolStart() {
  PluginState& state = pluginState();
  if (state.toolOpen) return 0;
  creoProgress(L"<KVD> start KVD");
  creoProgress(L"<KVD> first write runner log");
  logWrite(text::format(L"Visit Kelvane %i times", state.visitCount), kDebug);
  if (!createDialog()) return 1;
  creoProgress(L"<KVD> set user data");
  state.currentDate = os::localTime(os::clock().seconds(), "%d.%m.%Y %H:%M");
  creoProgress(L"<KVD> add button actions");
  prepareMainDialog(toolClose);
  toggleSides();
  creoProgress(L"<KVD> Create filter dialog");
  createFilterDialog();
  creoProgress(L"<KVD> Fill kvz menu");
  if (run::listPackages() != 0) {
    toolClose();
    return 1;
  }
  creoProgress(L"<KVD> add optionsmenu");
  connectChoosers();
  if (state.triggerType == 0) {
    creoProgress(L"<KVD> Initialize filter");
    applyChosenFilter();
  }
  creoProgress(L"<KVD> Initialize log");
  logClearView();
  return 0;
}

void pressStartEntry() {
  PluginState& state = pluginState();
  if (state.toolOpen) {
    if (state.workerMode) return;
    ProUIDialogHide(dialog());
    ProUIDialogShow(dialog());
    return;
  }
  ++state.visitCount;
  if (toolStart() != 0) {
    creoLog(L"Failure happend");
    return;
  }
  state.toolOpen = true;
  creoLog(L"Write welcome messages", kDebug);
  if (state.writeWelcomeMessage == 1 && state.triggerType == 0) writeWelcome();
  showLog();
  activateDialog();
  creoLog(L"Set Notifications", kDebug);
  run::setRefreshNotifications();
  if (state.logVisible == 0) ProUILayoutMappedUnset(dialog(), "kvaneLayerLog");
  if (state.treeVisible == 0) ProUILayoutMappedUnset(dialog(), "kvaneLayerLeft");
}

void toolClose() {
  PluginState& state = pluginState();
  creoLog(L"UsrCancelAction", kDebug);
  state.logVisible = state.logVisible == 0 ? 1 : 0;
  state.treeVisible = state.treeVisible == 0 ? 1 : 0;
  creoLog(L"UsrCancelAction-1", kDebug);
  for (const char* side : {"kvanefilter", "kvanehistory", "kvaneinfo"}) endDialog(side);
  creoLog(L"UsrCancelAction-2", kDebug);
  run::unsetRefreshNotifications();
  run::reattachTriggers();
  run::abandonRun();  // before a window comes forward that it may wait for
  creoLog(L"UsrCancelAction-3", kDebug);
  endDialog(dialog());
  run::resetModelTable();
  state.addInstances = state.addDrawings = state.addInherited = 0;
  creoLog(L"UsrCancelAction-4", kDebug);
  state.toolOpen = false;
  repaintCreo();
  state.autoclose = 0;
  creoLog(L"UsrCancelAction-5", kDebug);
  logCloseFile();
}

}  // namespace ui
