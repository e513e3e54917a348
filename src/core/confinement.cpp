#include "core/confinement.h"

#include <memory>

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

std::wstring& lastTold() {
  static std::wstring place;
  return place;
}

// What is asked several times in a row, as whether a file is there and then its content, is one refusal.
bool isToldAgain(const std::wstring& line) {
  const PluginState& state = pluginState();
  static std::wstring last;
  std::wstring place =
      text::format(L"%c%d %s %s ", state.section, state.actionIndex, state.currentAction, state.currentModelText);
  place += line;
  const bool isAgain = place == last;
  last = std::move(place);
  return isAgain;
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

void confineAsConfigured() {
  const ConfinementSettings& settings = confinementSettings();
  const PluginState& state = pluginState();
  const auto open = [&](os::Grants& grants) {
    for (const std::wstring* folder : {&state.kvzPath, &state.binPath, &state.confPath})
      grants.openTo(os::Permission::read, *folder);
    grants.startFrom(state.confPath);  // the script that converts workbooks
    for (const os::Need& need : settings.allowed) grants.allow(need);
    for (const os::Need& need : settings.denied) grants.deny(need);
  };
  if (os::Confine* const confine = os::Confine::inForce()) return open(confine->grants());
  if (!settings.isOn) return;
  os::Grants grants;
  openToolPlaces(grants, state.tempPath);
  if (const auto working = creo::ProDirectoryCurrentGet()) grants.openTo(os::Permission::write, working.value);
  open(grants);
  configured() = std::make_unique<os::Confine>(std::move(grants), &tellRefused);
}

void endConfinement() {
  configured().reset();
  lastTold().clear();
  confinementSettings() = {};
}

void tellRefused(const os::Asked& asked) {
  const std::wstring line = L"Refused: " + asked.what + L" (" + asked.reason + L")";
  if (isToldAgain(line)) return;
  const LogSound sound;
  logWrite(line, kError);
}

}  // namespace core
