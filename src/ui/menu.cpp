#include "ui/menu.h"

#include "core/log.h"
#include "core/state.h"
#include "creo/ProMenu.h"
#include "creo/ProUtil.h"
#include "ui/help.h"
#include "ui/main_dialog.h"

namespace ui {
namespace {

using namespace core;
using namespace creo;

constexpr const char* kMenu = "KVANEMenubarMenu";

int alwaysAvailable() { return kCommandAvailable; }

// An entry of the menu: its command, button and texts, and the lines of its failures.
struct Entry {
  const char *command, *button, *label, *help, *description, *icon;
  const wchar_t *noCommand, *noButton, *noDesignation, *noIcon;
};
constexpr Entry kStart = {"KVANEVisitParametersCmd",
                          "pbVisitParameters",
                          "KVD StartKelvaneBtn",
                          "KVD StartKelvaneHlp",
                          "KVD StartKelvaneDesc",
                          "kvanetool.png",
                          L"<KVD> main - Failure Setup Menu Bar 2",
                          L"<KVD> main - Failure Setup Menu Bar 3",
                          L"<KVD> main - Failure Setup Menu Bar 4",
                          L"<KVD> main - Can't find kvanetool icon"};
constexpr Entry kHelp = {"KVDHelpCmd",
                         "KVDHelpPB",
                         "KVD StartHelpBtn",
                         "KVD StartHelpHlp",
                         "KVD StartHelpDesc",
                         "help.png",
                         L"<KVD> main - Failure Setup Menu Bar 2.2",
                         L"<KVD> main - Failure Setup Menu Bar 2.3",
                         L"<KVD> main - Failure Setup Menu Bar 2.4",
                         L"<KVD> main - Can't find help icon"};

ProError failed(const wchar_t* line, ProError error) {
  creoLog(line);
  return error;
}

ProError addEntry(const Entry& entry, std::function<void()> action) {
  const std::wstring& file = pluginState().msgFile;
  const auto command = ProCmdActionAdd(entry.command, std::move(action), alwaysAvailable);
  if (!command) return failed(entry.noCommand, command.error);
  ProError error = ProMenubarmenuPushbuttonAdd(kMenu, entry.button, entry.label, entry.help, file, command.value);
  if (error != ProNoError) return failed(entry.noButton, error);
  error = ProCmdDesignate(command.value, entry.label, entry.help, entry.description, file);
  if (error != ProNoError) return failed(entry.noDesignation, error);
  if (ProCmdIconSet(command.value, entry.icon) != ProNoError) creoLog(entry.noIcon);
  return ProNoError;
}

// A command outside the menu; what fails is left out, as Creo works without it.
void addHiddenCommand(const char* name, const std::string& texts, const char* icon, std::function<void()> action) {
  const auto command = ProCmdActionAdd(name, std::move(action), alwaysAvailable);
  if (!command) return;
  ProCmdIconSet(command.value, icon);
  ProCmdDesignate(command.value, texts + "Btn", texts + "Hlp", texts + "Desc", pluginState().msgFile);
}

}  // namespace

ProError setUpMenu() {
  const ProError error = ProMenubarMenuAdd(kMenu, "KVD KVANEMenubarMenu", "Info", pluginState().msgFile);
  if (error != ProNoError && error != ProExists) return failed(L"<KVD> main - Failure Setup Menu Bar 1", error);
  const ProError start = addEntry(kStart, pressStartEntry);
  return start != ProNoError ? start : addEntry(kHelp, openHelp);
}

void addInstallCommand() {
  addHiddenCommand("KVDInstallUICmd", "KVD InstallUI", "installui.png", [] {});
}

void addIndicatorCommand() {
  if (!pluginState().checkParameter.empty()) addHiddenCommand("KVDATCmd", "KVD AT", "invisible.png", [] {});
}

}  // namespace ui
