#include <array>

#include "core/config.h"
#include "core/confinement.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/trace_settings.h"
#include "core/web_settings.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace core {
namespace {

template <auto Member>
void number(PluginState& state, const std::wstring& value) {
  state.*Member = text::parseInt(value);
}
template <auto Member>
void text(PluginState& state, const std::wstring& value) {
  state.*Member = value;
}
// A folder: with a closing separator.
template <auto Member>
void path(PluginState& state, const std::wstring& value) {
  state.*Member = os::asFolder(value);
}
// One of the dialog's menu: any other would choose no line of its own.
void logLevel(PluginState& state, const std::wstring& value) {
  const int level = text::parseInt(value);
  const bool isKnown = level == kNormal || level == kWarning || level == kError || level == kDebug;
  state.loglevel = isKnown ? level : kNormal;
  if (!isKnown) creoLog(text::format(L"<KVD> kvd_log_level=%d is none of 0, 1, 2 and 8 and counts as 0", level));
}
// The start value of a side's state: the tool's start flips it.
template <auto Member>
void inverted(PluginState& state, const std::wstring& value) {
  state.*Member = value.starts_with(L'1') ? 0 : 1;
}
// True for exactly "1".
template <auto Member>
void isOne(PluginState& state, const std::wstring& value) {
  state.*Member = value == L"1";
}
template <Trigger T, auto Member>
void triggerText(PluginState& state, const std::wstring& value) {
  state.trigger(T).*Member = value;
}
template <Trigger T>
void triggerShowUI(PluginState& state, const std::wstring& value) {
  state.trigger(T).startShowUI = text::parseInt(value);
}
// The fifth digit is always on, so that the digits for the types restrict this trigger.
void beforeSaveConf(PluginState& state, const std::wstring& value) {
  std::wstring& digits = state.trigger(Trigger::beforeSave).startConf;
  digits = value;
  if (digits.size() >= 5) digits[4] = L'1';
}
void language(PluginState&, const std::wstring& value) { setLanguage(text::equalNoCase(value, L"de") ? L"de" : L"en"); }

// A number below 1 would be no limit at all.
void urlTimeout(PluginState&, const std::wstring& value) {
  if (const int seconds = text::parseInt(value); seconds > 0) webSettings().timeoutSeconds = seconds;
}
void urlVerify(PluginState&, const std::wstring& value) { webSettings().verifyCertificates = value == L"1"; }

void traceFolder(PluginState&, const std::wstring& value) {
  traceSettings().folder = value.empty() ? std::wstring() : os::asFolder(value);
}
void traceTime(PluginState&, const std::wstring& value) { traceSettings().time = text::wholeInt(value); }

// Whoever writes something else meant to confine.
void confine(PluginState&, const std::wstring& value) {
  const std::wstring given(text::trimmed(value));
  confinementSettings().isOn = !given.empty() && given != L"0";
  confinementSettings().odd = confinementSettings().isOn && given != L"1" ? given : std::wstring();
}
// Names with semicolons between them, in place of those that an earlier line gave; of the clipboard "1". Paths stand in
// the system's form.
template <os::Permission P, auto Member>
void grants(PluginState&, const std::wstring& value) {
  std::vector<os::Need>& all = confinementSettings().*Member;
  std::erase_if(all, [](const os::Need& need) { return need.permission == P; });
  if (P == os::Permission::clipboard) {
    if (value == L"1") all.push_back({P, {}});
    return;
  }
  for (const std::wstring& piece : text::split(value, L';')) {
    std::wstring name(text::trimmed(piece));
    if (name.empty()) continue;
    const bool isPath = P == os::Permission::read || P == os::Permission::write ||
                        (P == os::Permission::run && name.find_first_of(L"\\/") != name.npos);
    // Another one would be taken for one below the root, and a letter alone that stands for nothing for the root.
    const std::wstring letter = os::splitDevice(name).device;
    const std::size_t start = letter.empty() ? 0 : 2;
    const bool isLost = !letter.empty() && !os::mounts().has(letter[0]) && os::partsOf(name).empty();
    const bool isWhole = name.find_first_of(L"\\/", start) == start && !isLost;
    const bool isNoServer = P == os::Permission::net && !os::isServer(name);
    if ((isPath && !isWhole) || isNoServer) {
      confinementSettings().notWhole.push_back(std::move(name));
      continue;
    }
    all.push_back({P, isPath ? text::fromUtf8(os::mounts().machine(name)) : std::move(name)});
  }
}
template <os::Permission P>
constexpr auto allowed = grants<P, &ConfinementSettings::allowed>;
template <os::Permission P>
constexpr auto denied = grants<P, &ConfinementSettings::denied>;

constexpr auto kKeys = std::to_array<ConfigKey>({
    // key, short name, source slot, what it sets
    {L"kvd_kvz_path", L"kvzPath", 0, path<&PluginState::kvzPath>},
    {L"kvd_bin_path", L"binPath", 1, path<&PluginState::binPath>},
    {L"kvd_temp_path", L"tempPath", 2, path<&PluginState::tempPath>},
    {L"kvd_column_parameter", L"parameter", 3, text<&PluginState::columnParameter>},
    {L"kvd_column_parameter_width", L"", -1, number<&PluginState::columnParameterWidth>},
    {L"kvd_ext_filter_file", L"extFilter", 4, text<&PluginState::extFilter>},
    {L"kvd_log_level", L"loglevel", 5, logLevel},
    {L"kvd_filter_prt", L"prt", 6, number<&PluginState::filterPrt>},
    {L"kvd_filter_asm", L"asm", 7, number<&PluginState::filterAsm>},
    {L"kvd_filter_drw", L"drw", 8, number<&PluginState::filterDrw>},
    {L"kvd_filter_curmod", L"curmod", 9, number<&PluginState::filterCurmod>},
    {L"kvd_filter_inst", L"inst", 10, number<&PluginState::filterInst>},
    {L"kvd_use_global_filter", L"useGlobFilter", 11, number<&PluginState::useGlobFilter>},
    {L"kvd_show_no_warnings_in_log", L"showNoWarnings", 12, number<&PluginState::showNoWarnings>},
    {L"kvd_new_log_file_for_every_run", L"forEveryRunNewLogFile", 13, number<&PluginState::forEveryRunNewLogFile>},
    {L"kvd_show_no_debug_in_log", L"noDebugInLogFile", 14, number<&PluginState::noDebugInLogFile>},
    {L"kvd_write_history_in_models", L"writeExtData", 15, number<&PluginState::writeExtData>},
    {L"kvd_auto_unset_already_reworked_models", L"autoUnsetReworkedData", 16,
     number<&PluginState::autoUnsetReworkedData>},
    {L"kvd_show_log", L"", 17, inverted<&PluginState::logVisible>},
    {L"kvd_show_tree", L"", 18, inverted<&PluginState::treeVisible>},
    {L"kvd_start_kvz_before_save", L"", 19, triggerText<Trigger::beforeSave, &TriggerSettings::startKvz>},
    {L"kvd_start_kvz_after_open", L"", 20, triggerText<Trigger::afterOpen, &TriggerSettings::startKvz>},
    {L"kvd_start_kvz_after_create", L"", 21, triggerText<Trigger::afterCreate, &TriggerSettings::startKvz>},
    {L"kvd_start_kvz_after_occupy", L"", -1, triggerText<Trigger::afterOccupy, &TriggerSettings::startKvz>},
    {L"kvd_start_kvz_after_solid_regen", L"", -1, triggerText<Trigger::afterRegenerate, &TriggerSettings::startKvz>},
    {L"kvd_start_kvz_before_erase", L"", -1, triggerText<Trigger::beforeErase, &TriggerSettings::startKvz>},
    {L"kvd_start_kvz_before_solid_regen", L"", -1, triggerText<Trigger::beforeRegenerate, &TriggerSettings::startKvz>},
    {L"kvd_pdm_mdl_change_dialog", L"", -1, isOne<&PluginState::pdmChangeDialog>},
    {L"kvd_check_modifyable", L"", -1, isOne<&PluginState::checkModifiable>},
    {L"kvd_start_kvz_before_save_conf", L"", 22, beforeSaveConf},
    {L"kvd_start_kvz_after_open_conf", L"", 23, triggerText<Trigger::afterOpen, &TriggerSettings::startConf>},
    {L"kvd_start_kvz_after_create_conf", L"", 24, triggerText<Trigger::afterCreate, &TriggerSettings::startConf>},
    {L"kvd_start_kvz_after_occupy_conf", L"", -1, triggerText<Trigger::afterOccupy, &TriggerSettings::startConf>},
    {L"kvd_start_kvz_after_solid_regen_conf", L"", -1,
     triggerText<Trigger::afterRegenerate, &TriggerSettings::startConf>},
    {L"kvd_start_kvz_before_solid_regen_conf", L"", -1,
     triggerText<Trigger::beforeRegenerate, &TriggerSettings::startConf>},
    {L"kvd_start_kvz_before_erase_conf", L"", -1, triggerText<Trigger::beforeErase, &TriggerSettings::startConf>},
    {L"kvd_start_kvz_after_create_showUI", L"", 25, triggerShowUI<Trigger::afterCreate>},
    {L"kvd_start_kvz_after_open_showUI", L"", 26, triggerShowUI<Trigger::afterOpen>},
    {L"kvd_start_kvz_before_save_showUI", L"", 27, triggerShowUI<Trigger::beforeSave>},
    {L"kvd_start_kvz_after_occupy_showUI", L"", -1, triggerShowUI<Trigger::afterOccupy>},
    {L"kvd_start_kvz_after_solid_regen_showUI", L"", -1, triggerShowUI<Trigger::afterRegenerate>},
    {L"kvd_start_kvz_before_erase_showUI", L"", -1, triggerShowUI<Trigger::beforeErase>},
    {L"kvd_start_kvz_before_solid_regen_showUI", L"", -1, triggerShowUI<Trigger::beforeRegenerate>},
    {L"kvd_log_show_filter_warning_on_parent_node", L"", 28, number<&PluginState::filterWarningOnParent>},
    {L"kvd_start_kvz_before_save_write_check_rework_history", L"", 29,
     triggerText<Trigger::beforeSave, &TriggerSettings::startRework>},
    {L"kvd_start_kvz_after_open_write_check_rework_history", L"", 30,
     triggerText<Trigger::afterOpen, &TriggerSettings::startRework>},
    {L"kvd_start_kvz_at_new_write_check_rework_history", L"", 31,
     triggerText<Trigger::afterCreate, &TriggerSettings::startRework>},
    {L"kvd_start_kvz_after_occupy_write_check_rework_history", L"", -1,
     triggerText<Trigger::afterOccupy, &TriggerSettings::startRework>},
    {L"kvd_start_kvz_after_solid_regen_write_check_rework_history", L"", -1,
     triggerText<Trigger::afterRegenerate, &TriggerSettings::startRework>},
    {L"kvd_start_kvz_before_erase_write_check_rework_history", L"", -1,
     triggerText<Trigger::beforeErase, &TriggerSettings::startRework>},
    {L"kvd_start_kvz_before_solid_regen_write_check_rework_history", L"", -1,
     triggerText<Trigger::beforeRegenerate, &TriggerSettings::startRework>},
    {L"kvd_cancel_if_not_checked_out", L"cancelIfNotCheckedOut", 32, number<&PluginState::cancelIfNotCheckedOut>},
    {L"kvd_no_user_cfg", L"", 33, number<&PluginState::noUserCfg>},
    {L"kvd_show_no_pdm_server_informations", L"", 34, number<&PluginState::noPdmServerInformations>},
    {L"kvd_breakpoint", L"", -1, number<&PluginState::breakpoint>},
    {L"kvd_no_pro_notifications", L"", -1, number<&PluginState::noProNotifications>},
    {L"kvd_no_debug_in_creo_log", L"", -1, number<&PluginState::noDebugInCreoLog>},
    {L"kvd_start_trigger_without_kvd", L"", -1, number<&PluginState::startTriggerWithoutKvd>},
    {L"kvd_delete_log_files", L"", -1, isOne<&PluginState::deleteLogFiles>},
    {L"kvd_check_parameter", L"", -1, text<&PluginState::checkParameter>},
    {L"kvd_check_parameter_value", L"", -1, text<&PluginState::checkParameterValue>},
    {L"kvd_lang", L"lang", 35, language},
    {L"kvd_write_welcome_message", L"writeWelcomeMessage", 36, number<&PluginState::writeWelcomeMessage>},
    {L"kvd_url_timeout", L"", -1, urlTimeout},
    {L"kvd_url_verify", L"", -1, urlVerify},
    {L"kvd_confine", L"", -1, confine},
    {L"kvd_allow_run", L"", -1, allowed<os::Permission::run>},
    {L"kvd_allow_net", L"", -1, allowed<os::Permission::net>},
    {L"kvd_allow_read", L"", -1, allowed<os::Permission::read>},
    {L"kvd_allow_write", L"", -1, allowed<os::Permission::write>},
    {L"kvd_allow_env", L"", -1, allowed<os::Permission::env>},
    {L"kvd_allow_clipboard", L"", -1, allowed<os::Permission::clipboard>},
    {L"kvd_deny_run", L"", -1, denied<os::Permission::run>},
    {L"kvd_deny_net", L"", -1, denied<os::Permission::net>},
    {L"kvd_deny_read", L"", -1, denied<os::Permission::read>},
    {L"kvd_deny_write", L"", -1, denied<os::Permission::write>},
    {L"kvd_deny_env", L"", -1, denied<os::Permission::env>},
    {L"kvd_deny_clipboard", L"", -1, denied<os::Permission::clipboard>},
    {L"kvd_trace", L"", -1, traceFolder},
    {L"kvd_trace_time", L"", -1, traceTime},
    {L"kvd_log_as_tree", L"logType", 37, number<&PluginState::logType>},
});

}  // namespace

WebSettings& webSettings() {
  static WebSettings settings;
  return settings;
}

TraceSettings& traceSettings() {
  static TraceSettings settings;
  return settings;
}

std::span<const ConfigKey> configKeys() { return kKeys; }

}  // namespace core
