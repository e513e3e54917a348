#include "ui/info_dialog.h"

#include <array>
#include <string>

#include "core/config.h"
#include "core/dialogs.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "creo/ProFileChoose.h"
#include "creo/ProUI.h"
#include "creo/ProUIList.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"

namespace ui {
namespace {

using namespace core;
using namespace creo;

constexpr const char* kDialog = "kvaneinfo";
constexpr const char* kRows = "kvaneInfoConfigList";

struct Row {
  std::wstring_view key;
  std::wstring (*value)(const PluginState& state);
};

template <auto Member>
std::wstring number(const PluginState& state) {
  return std::to_wstring(state.*Member);
}
template <auto Member>
std::wstring words(const PluginState& state) {
  return state.*Member;
}
template <Trigger T>
std::wstring triggerList(const PluginState& state) {
  return state.triggers[static_cast<std::size_t>(T)].startKvz;
}

constexpr auto kConfiguration = std::to_array<Row>({
    {L"kvd_kvz_path", words<&PluginState::kvzPath>},
    {L"kvd_temp_path", words<&PluginState::tempPath>},
    {L"kvd_filter_curmod", number<&PluginState::filterCurmod>},
    {L"kvd_filter_prt", number<&PluginState::filterPrt>},
    {L"kvd_filter_asm", number<&PluginState::filterAsm>},
    {L"kvd_filter_drw", number<&PluginState::filterDrw>},
    {L"kvd_filter_inst", number<&PluginState::filterInst>},
    {L"kvd_column_parameter", words<&PluginState::columnParameter>},
    {L"kvd_ext_filter_file", words<&PluginState::extFilter>},
    {L"kvd_use_global_filter", number<&PluginState::useGlobFilter>},
    {L"kvd_write_history_in_models", number<&PluginState::writeExtData>},
    {L"kvd_auto_unset_already_reworked_models", number<&PluginState::autoUnsetReworkedData>},
    {L"kvd_lang", [](const PluginState&) -> std::wstring { return useGerman() ? L"de" : L"en"; }},
    {L"kvd_write_welcome_message", number<&PluginState::writeWelcomeMessage>},
    {L"kvd_log_as_tree", number<&PluginState::logType>},
    {L"kvd_show_no_warnings_in_log", number<&PluginState::showNoWarnings>},
    {L"kvd_new_log_file_for_every_run", number<&PluginState::forEveryRunNewLogFile>},
    {L"kvd_show_no_debug_in_log", number<&PluginState::noDebugInLogFile>},
    {L"kvd_log_show_filter_warning_on_parent_node", number<&PluginState::filterWarningOnParent>},
    {L"kvd_show_no_pdm_server_informations", number<&PluginState::noPdmServerInformations>},
    {L"kvd_show_log", number<&PluginState::logVisible>},
    {L"kvd_show_tree", number<&PluginState::treeVisible>},
    {L"kvd_start_kvz_before_save", triggerList<Trigger::beforeSave>},
    {L"kvd_start_kvz_after_open", triggerList<Trigger::afterOpen>},
    {L"kvd_no_user_cfg", number<&PluginState::noUserCfg>},
});

// Which of the two files a key's value came from.
std::wstring_view sourceMark(std::wstring_view name) {
  for (const ConfigKey& key : configKeys()) {
    if (key.name != name || key.sourceSlot < 0) continue;
    switch (pluginState().optionSource[static_cast<std::size_t>(key.sourceSlot)]) {
      case OptionSource::mainFile:
        return L"kvd_main.cfg";
      case OptionSource::userFile:
        return L"kvd_user.cfg";
      case OptionSource::byDefault:
        break;
    }
  }
  return L"default";
}

// Steps are numbered in the lines of their failures.
bool isDone(int step, ProError result) {
  if (result != ProNoError) creoLog(text::format(L"kvaneinfo - %d", step));
  return result == ProNoError;
}

ProError fillRows() {
  std::vector<std::string> names;
  std::vector<std::wstring> labels;
  for (const Row& row : kConfiguration) {
    names.push_back(std::to_string(names.size()));
    labels.push_back(text::format(L"%s: %s: %s", sourceMark(row.key), row.key, row.value(pluginState())));
  }
  if (const ProError result = ProUIListNamesSet(kDialog, kRows, std::move(names))) return result;
  return ProUIListLabelsSet(kDialog, kRows, std::move(labels));
}

ProError fill() {
  if (const ProError result = ProUILabelTextSet(kDialog, "kvaneInfoVersionFillLbl", pluginState().version))
    return result;
  if (const ProError result = ProUILabelTextSet(kDialog, "kvaneInfoConfDirFillLbl", pluginState().confPath))
    return result;
  return fillRows();
}

void leave(const std::string&, const std::string&) {
  ProUIDialogExit(kDialog, 0);
  ProUIDialogDestroy(kDialog);
}

std::wstring savedText() {
  const PluginState& state = pluginState();
  std::wstring text = L"Installed KVD Version: " + state.version + L"\n";
  text += L"Configuration path: " + state.confPath + L"kvd_main.cfg\n";
  if (state.noUserCfg == 0)
    text += L"Configuration user path: " + os::environment(L"appdata").value_or(L"") +
            L"\\OSTELO\\KVD\\conf\\kvd_user.cfg\n";
  text += L"Configuration:\n";
  for (const std::wstring& label : ProUIListLabelsGet(kDialog, kRows).value) text += label + L"\n";
  return text;
}

void save(const std::string&, const std::string&) {
  if (const auto path = ProFileSave(L"save txt", L"*.txt", {}, L"kvd_info.txt"))
    if (os::files().write(path.value, text::toUtf8(savedText()))) creoLog(L"<KVD> Error opening file!");
  ProUIDialogShow(kDialog);
}

ProError connect() {
  if (const ProError result = ProUIDialogCloseActionSet(kDialog, &leave)) return result;
  if (const ProError result = ProUIPushbuttonActivateActionSet(kDialog, "kvaneInfoOkBtn", &leave)) return result;
  return ProUIPushbuttonActivateActionSet(kDialog, "kvaneInfoSaveBtn", &save);
}

}  // namespace

void openInfoDialog() {
  if (!isDone(1, core::createDialog(kDialog, kDialog))) return;
  isDone(2, fill());
  // One that nothing closes would block Creo.
  if (isDone(3, connect())) isDone(4, ProUIDialogActivate(kDialog).error);
  ProUIDialogDestroy(kDialog);  // what a failed step left standing would keep it from coming back
}

}  // namespace ui
