#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

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

// The name and the home folder that the machine's list of users has for this one.
struct User {
  std::string name, home;
};
User user() {
  std::string buffer(16384, '\0');
  passwd entry{};
  passwd* found = nullptr;
  if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) return {};
  return {found->pw_name, found->pw_dir};
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::optional<std::wstring> userName() {
  std::string name = user().name;
  if (name.empty()) name = variable("USER");
  if (name.empty()) return std::nullopt;
  return text::fromUtf8(name);
}

std::optional<std::wstring> configurationFolder() {
  std::string folder = variable("XDG_CONFIG_HOME");
  if (!folder.starts_with('/')) {
    std::string home = variable("HOME");
    if (home.empty()) home = user().home;
    if (home.empty()) return std::nullopt;
    folder = home + "/.config";
  }
  return mounts().system(folder);
}

}  // namespace

std::optional<std::wstring> environment(std::wstring_view name) {
  if (const std::string known = knownName(text::toUtf8(name)); !known.empty()) {
    return text::fromUtf8(variable(known.c_str()));
  }
  if (text::equalNoCase(name, L"username")) return userName();
  if (text::equalNoCase(name, L"appdata")) return configurationFolder();
  return std::nullopt;
}

std::error_code setEnvironment(std::wstring_view name, std::wstring_view value) {
  if (name.empty() || name.find_first_of(std::wstring_view(L"=\0", 2)) != name.npos) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  const std::string bytes = text::toUtf8(name);
  const std::string known = knownName(bytes);
  if (::setenv((known.empty() ? bytes : known).c_str(), text::toUtf8(value).c_str(), 1) == 0) return {};
  return std::error_code(errno, std::generic_category());
}

}  // namespace os
