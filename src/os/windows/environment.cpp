#include <stdlib.h>

#include <map>

#include "os/environment_door.h"
#include "os/gate.h"
#include "os/places.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "os/windows/native.h"
#include "os/windows/own_environment.h"
#include "text/letters.h"

namespace os {
namespace {

// The system itself knows a variable in any case of its name.
std::optional<std::wstring> variable(const std::wstring& name) {
  std::wstring value(256, L'\0');
  for (;;) {
    ::SetLastError(ERROR_SUCCESS);
    const DWORD size = ::GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (size == 0 && ::GetLastError() != ERROR_SUCCESS) return std::nullopt;
    const bool isWhole = size < value.size();
    value.resize(size);
    if (isWhole) return value;
  }
}

// What the variables that were set held before; nothing for one that wasn't there.
using Values = std::map<std::wstring, std::optional<std::wstring>>;
Values& replaced() {
  static Values values;
  return values;
}

std::optional<std::wstring> userName() {
  std::wstring name(257, L'\0');  // the longest that the system has
  auto size = static_cast<DWORD>(name.size());
  if (!::GetUserNameW(name.data(), &size) || size < 2) return std::nullopt;
  name.resize(size - 1);
  return name;
}

std::optional<std::wstring> settingsFolder() {
  const std::string folder = configurationFolder();
  return folder.empty() ? std::nullopt : std::optional<std::wstring>(mounts().system(folder));
}

}  // namespace

std::optional<std::wstring> machineEnvironment(std::wstring_view name) {
  if (name.empty()) return std::nullopt;
  if (auto value = variable(std::wstring(name))) return value;
  if (text::equalNoCase(name, L"username")) return userName();
  if (text::equalNoCase(name, L"appdata")) return settingsFolder();
  return std::nullopt;
}

std::error_code setEnvironment(std::wstring_view name, std::wstring_view value) {
  if (name.empty() || name.find_first_of(std::wstring_view(L"=\0", 2)) != name.npos)
    return std::make_error_code(std::errc::invalid_argument);
  if (Gate* const asked = gate())
    if (const auto error = asked->set(name)) return error;
  const std::wstring key(name), text(value.substr(0, value.find(L'\0')));
  replaced().try_emplace(text::upper(name), variable(key));
  // The C library keeps a copy, for which an empty variable is none.
  static_cast<void>(::_wputenv_s(key.c_str(), text.c_str()));
  return ::SetEnvironmentVariableW(key.c_str(), text.c_str()) ? std::error_code{} : lastError();
}

std::wstring ownEnvironment() {
  std::wstring block;
  wchar_t* const all = ::GetEnvironmentStringsW();
  for (const wchar_t* line = all; line && *line != L'\0';) {
    const std::wstring_view entry(line);
    line += entry.size() + 1;
    // The folders of the letters begin with "=".
    if (!replaced().contains(text::upper(entry.substr(0, entry.find(L'=', 1))))) block.append(entry).append(1, L'\0');
  }
  ::FreeEnvironmentStringsW(all);
  for (const auto& [name, value] : replaced())
    if (value) block.append(name).append(L"=").append(*value).append(1, L'\0');
  return block.append(1, L'\0');
}

}  // namespace os
