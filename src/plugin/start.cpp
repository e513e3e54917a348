#include "plugin/start.h"

#include <algorithm>
#include <array>
#include <exception>

#include "core/config.h"
#include "core/confinement.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "core/trace_settings.h"
#include "core/web_settings.h"
#include "creo/ProUI.h"
#include "creo/ProUtil.h"
#include "creo/ProWindow.h"
#include "creo/entry.h"
#include "language/comparison_watch.h"
#include "os/surroundings.h"
#include "plugin/action_table.h"
#include "plugin/recording.h"
#include "run/model_table.h"
#include "run/run.h"
#include "run/screen.h"
#include "run/triggers.h"
#include "text/encoding.h"
#include "text/format.h"
#include "trace/refused.h"
#include "ui/indicator.h"
#include "ui/main_dialog.h"
#include "ui/menu.h"
#include "ui/screen.h"

namespace plugin {
namespace {

using namespace core;
using namespace creo;

constexpr int kWideCharSize = sizeof(wchar_t);
constexpr std::array<std::wstring_view, 5> kKnownVersions = {L"Creo 4.0", L"Creo 5.0", L"Creo 6.0", L"Creo 7.0",
                                                             L"Creo 8.0"};

text::Fault notStarted(std::wstring what) {
  creoLog(what);
  return {std::move(what)};
}

// Both files, the user's after the site's; appdata holds the user's folder.
void readConfiguration() {
  const os::OwnWork configuration;
  creoProgress(L"<KVD> set std options");
  readConfigPaths();
  readConfigFile(pluginState().confPath + L"kvd_main.cfg", OptionSource::mainFile);
  const auto appdata = os::environment(L"appdata");
  if (pluginState().noUserCfg == 0 && appdata) {
    readConfigFile(*appdata + L"\\OSTELO\\KVD\\conf\\kvd_user.cfg", OptionSource::userFile);
  }
}

// Creates the temp folder and tries to write there.
bool tempFolderIsWritable() {
  const std::wstring& folder = pluginState().tempPath;
  creoProgress(L"<KVD> Check Temp Folder");
  creoProgress(folder);
  os::files().createFolders(folder);
  creoProgress(L"<KVD> Check writetest");
  return !os::files().write(folder + L"writetest.txt", "");
}

void testGraphics() {
  if (ProWindowActivate(0) != ProNoGraphics) return;
  creoLog(L"<KVD> No Graphics Mode detected");
  pluginState().workerMode = true;
}

bool creoVersionIsKnown() {
  const PluginState& state = pluginState();
  if (std::find(kKnownVersions.begin(), kKnownVersions.end(), state.creoVersion) != kKnownVersions.end()) return true;
  creoLog(L"<KVD> This KVD version does not support your Creo version");
  creoLog(state.creoVersion);
  return false;
}

// Menu, triggers and the commands beside them. What fails here leaves the plug-in loaded.
void attach() {
  const PluginState& state = pluginState();
  const bool withMenu = state.startTriggerWithoutKvd == 0;
  if (!withMenu) creoLog(L"<KVD> - start explicit Trigger mode (start_trigger_without_kvd = 1)");
  if (withMenu && ui::setUpMenu() != ProNoError) {
    creoLog(L"<KVD> Error setting up menubar.");
    return;
  }
  run::attachTriggers();
  if (state.workerMode && withMenu) return;
  const std::wstring site = state.kvzPath + L"/kvuser_config.pro";
  if (ProInputFileRead(ProMdl(), site, ProInputFileType::configuration) == ProNoError) ui::addInstallCommand();
  ui::startParameterIndicator();
}

}  // namespace

text::Fault startPlugin(std::string_view version, std::string_view build) {
  PluginState& state = pluginState();
  handDownActions();
  run::screen() = ui::screen();
  creoLog(L"<KVD> Kelvane User " + state.version + L" started");
  const int creoSize = ProWcharSizeGet();
  if (creoSize != kWideCharSize) {
    return notStarted(text::format(L"<KVD> main - Incorrect size of wchar_t: %i/%i.", kWideCharSize, creoSize));
  }
  if (checkMessageTables() != 0) return notStarted(L"<KVD> KEYTABLE PROBLEM");
  state.creoVersion = text::fromUtf8(version);
  state.creoBuild = text::fromUtf8(build);
  readConfiguration();
  decideRecording();
  if (!tempFolderIsWritable()) {
    text::Fault fault = notStarted(L"<KVD> No rights to write files inside the temp directory.");
    creoLog(state.tempPath);
    return fault;
  }
  withoutHearing([] { confineAsConfigured([](const os::Asked& asked) { trace::tellRefused(asked, &tellRefused); }); });
  testGraphics();
  if (creoVersionIsKnown()) attach();
  return {};
}

void endPlugin() {
  const PluginState& state = pluginState();
  if (ProUICheckbuttonGetState("kvanefilter", "kvaneFilterGlobal")) ui::toolClose();
  ui::stopParameterIndicator();
  run::detachTriggers();
  if (state.deleteLogFiles) {
    const auto entries = os::files().list(state.tempPath);
    for (const os::Entry& entry : entries.value) {
      const bool isLog = entry.name.starts_with(L"kvd_log - ") && entry.name.ends_with(L".txt");
      if (isLog && !entry.isFolder) os::files().remove(state.tempPath + entry.name);
    }
  }
  run::resetModelTable();
  language::forgetWhatWasGivenUp();
  withoutHearing(&endConfinement);
  logReset();
  webSettings() = {};
  traceSettings() = {};
  pluginState().reset();
}

}  // namespace plugin
