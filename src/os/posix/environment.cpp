#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "os/environment_door.h"
#include "os/gate.h"
#include "os/places.h"
#include "os/posix/own_environment.h"
#include "os/posix/own_user.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace os {
namespace {

// The name under which the environment knows a variable: this spelling, else another one of it, as lists are written
// where case doesn't count. Empty when there is none.
std::string knownName(const std::string& name) {
  if (std::getenv(name.c_str())) return name;
  for (char** entry = environ; entry && *entry; ++entry) {
    const std::string_view line(*entry);
    const std::string_view known = line.substr(0, line.find('='));
    if (known.size() == name.size() && text::equalNoCase(known, name)) return std::string(known);
  }
  return {};
}

// What the variables that were set held before; nothing for one that wasn't there.
std::map<std::string, std::optional<std::string>>& replaced() {
  static std::map<std::string, std::optional<std::string>> values;
  return values;
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::optional<std::wstring> userName() {
  std::string name = ownUser().name;
  if (name.empty()) name = variable("USER");
  if (name.empty()) return std::nullopt;
  return text::fromUtf8(name);
}

std::optional<std::wstring> settingsFolder() {
  const std::string folder = configurationFolder();
  return folder.empty() ? std::nullopt : std::optional<std::wstring>(mounts().system(folder));
}

}  // namespace

std::optional<std::wstring> machineEnvironment(std::wstring_view name) {
  if (const std::string known = knownName(text::toUtf8(name)); !known.empty()) {
    return text::fromUtf8(variable(known.c_str()));
  }
  if (text::equalNoCase(name, L"username")) return userName();
  if (text::equalNoCase(name, L"appdata")) return settingsFolder();
  return std::nullopt;
}

std::error_code setEnvironment(std::wstring_view name, std::wstring_view value) {
  if (name.empty() || name.find_first_of(std::wstring_view(L"=\0", 2)) != name.npos) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  if (Gate* const asked = gate())
    if (const auto error = asked->set(name)) return error;
  const std::string bytes = text::toUtf8(name);
  const std::string known = knownName(bytes);
  const std::string variable = known.empty() ? bytes : known;
  const char* const before = std::getenv(variable.c_str());
  replaced().try_emplace(variable, before ? std::optional<std::string>(before) : std::nullopt);
  if (::setenv(variable.c_str(), text::toUtf8(value).c_str(), 1) == 0) return {};
  return std::error_code(errno, std::generic_category());
}

OwnEnvironment::OwnEnvironment() {
  for (char** entry = environ; entry && *entry; ++entry) {
    std::string line(*entry);
    if (!replaced().contains(line.substr(0, line.find('=')))) lines_.push_back(std::move(line));
  }
  for (const auto& [name, value] : replaced())
    if (value) lines_.push_back(std::string(name).append("=").append(*value));
  for (std::string& line : lines_) pointers_.push_back(line.data());
  pointers_.push_back(nullptr);
}

bool OwnEnvironment::holds(const std::string& name) const {
  return std::any_of(lines_.begin(), lines_.end(), [start = name + "="](const std::string& line) {
    return line.starts_with(start) && line.size() > start.size();
  });
}

}  // namespace os
