#include "core/confinement.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "core/log.h"
#include "core/log_silence.h"
#include "core/state.h"
#include "creo/ProUtil.h"
#include "os/paths.h"
#include "text/format.h"

namespace core {
namespace {

std::unique_ptr<os::Confine>& configured() {
  static std::unique_ptr<os::Confine> confine;
  return confine;
}

// The refusals of an action on a model, and the log that they stand in.
struct Told {
  std::wstring place;
  int log = 0;
  std::set<std::wstring> lines;
};

Told& lastTold() {
  static Told told;
  return told;
}

// Refusals that came before the configuration said where logs lie, or behind the plug-in's end; nothing: it runs.
std::optional<std::vector<std::wstring>>& early() {
  static std::optional<std::vector<std::wstring>> lines{std::in_place};
  return lines;
}

// Behind the configuration.
void tellEarly() {
  const ConfinementSettings& settings = confinementSettings();
  for (const std::wstring& name : settings.notWhole)
    creoLog(text::format(
        L"<KVD> '%s' of kvd_allow_... or kvd_deny_... is no whole path or no server and counts for nothing", name));
  const auto lines = std::exchange(early(), std::nullopt);
  for (const std::wstring& line : lines.value_or(std::vector<std::wstring>())) logWrite(line, kError);
}

std::wstring placeNow() {
  const PluginState& state = pluginState();
  return text::format(L"%c%d %s %s ", state.section, state.actionIndex, state.currentAction, state.currentModelText);
}

}  // namespace

ConfinementSettings& confinementSettings() {
  static ConfinementSettings settings;
  return settings;
}

void openToolPlaces(os::Grants& grants, std::wstring_view temp) {
  grants.openTo(os::Permission::write, temp);
  grants.keepFromWriting(os::joined(temp, L"conf"));
  // Another list's package would run what this one left there.
  grants.keepFromWriting(os::joined(temp, L"open_kvz*"));
}

void confineAsConfigured(void (*tell)(const os::Asked&)) {
  const ConfinementSettings& settings = confinementSettings();
  const PluginState& state = pluginState();
  const auto open = [&](os::Grants& grants) {
    for (const std::wstring* folder : {&state.kvzPath, &state.binPath, &state.confPath})
      grants.openTo(os::Permission::read, *folder);
    grants.startFrom(state.confPath);  // the script that converts workbooks
    for (const os::Need& need : settings.allowed) grants.allow(need);
    for (const os::Need& need : settings.denied) grants.deny(need);
  };
  if (!settings.odd.empty())
    creoLog(text::format(L"<KVD> kvd_confine=%s is neither 0 nor 1 and counts as 1", settings.odd));
  // Asked in any case: a run that is played is confined already.
  const auto working = settings.isOn ? creo::ProDirectoryCurrentGet() : creo::Got<std::wstring>();
  if (os::Confine* const confine = os::Confine::inForce()) {
    open(confine->grants());
    return tellEarly();
  }
  if (!settings.isOn) return;
  os::Grants grants;
  openToolPlaces(grants, state.tempPath);
  if (working) grants.openTo(os::Permission::write, working.value);
  open(grants);
  configured() = std::make_unique<os::Confine>(std::move(grants), tell);
  tellEarly();
}

void endConfinement() {
  configured().reset();
  lastTold() = {};
  early().emplace();
  confinementSettings() = {};
}

void tellRefused(const os::Asked& asked) {
  const std::wstring line = L"Refused: " + asked.what + L" (" + asked.reason + L")";
  if (early()) {
    if (std::find(early()->begin(), early()->end(), line) == early()->end()) early()->push_back(line);
    return;
  }
  Told& told = lastTold();
  if (std::wstring place = placeNow(); told.place != place || told.log != logsBegun())
    told = {std::move(place), logsBegun(), {}};
  // What an action asks several times, as whether a file is there and then its content, is one refusal.
  if (!told.lines.insert(line).second) return;
  // A log that may not be written itself is no reason to write into it.
  static bool isTelling = false;
  if (std::exchange(isTelling, true)) return;
  const LogSound sound;
  logWrite(line, kError);
  isTelling = false;
  told.log = logsBegun();  // the line may have opened its log
}

std::vector<std::wstring> takeUntoldRefusals() {
  return early() ? std::exchange(*early(), {}) : std::vector<std::wstring>();
}

}  // namespace core
