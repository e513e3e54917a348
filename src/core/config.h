// The two configuration files: kvd_main.cfg of the site and kvd_user.cfg of the user, lines of key=value, read once at
// the start. A later file wins.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "core/option_source.h"
#include "core/state.h"

namespace core {

// One key. apply gets the value with its environment variables replaced.
struct ConfigKey {
  std::wstring_view name;       // "kvd_log_level"
  std::wstring_view shortName;  // "loglevel"; may be empty
  int sourceSlot;               // in PluginState::optionSource; -1: keeps none
  void (*apply)(PluginState& state, const std::wstring& value);
};
// In the order of evaluation; the slots are numbered in that order.
std::span<const ConfigKey> configKeys();

// Locates configuration folder and plug-in folder, and takes the language from Creo's message file.
void readConfigPaths();
// Reads one of the files into the state. A missing file is no failure: the fields stay.
void readConfigFile(std::wstring_view path, OptionSource which);
// The application's text path without its closing "text", with a closing backslash.
std::wstring normalisedTextPath(std::wstring_view path);

}  // namespace core
