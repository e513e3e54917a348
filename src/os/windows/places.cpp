#include "os/places.h"

#include "os/windows/native.h"
#include "os/windows_rules.h"
#include "text/encoding.h"

// Behind what it needs.
#include <shlobj.h>

namespace os {
namespace {

std::string known(const KNOWNFOLDERID& id) {
  PWSTR path = nullptr;
  const bool isFound = ::SHGetKnownFolderPath(id, 0, nullptr, &path) == S_OK;
  std::string folder = isFound ? machineOf(path) : std::string();
  ::CoTaskMemFree(path);
  return folder;
}

}  // namespace

// What stays on this machine, and what follows its user to another one.
std::string cacheFolder() { return known(FOLDERID_LocalAppData); }

std::string configurationFolder() { return known(FOLDERID_RoamingAppData); }

std::vector<std::string> siteFolders() {
  std::string folder = known(FOLDERID_ProgramData);
  if (folder.empty()) return {};
  return {std::move(folder)};
}

bool isWhole(std::string_view machine) { return windows::isWhole(text::fromUtf8(machine)); }

bool isAnybodys(const std::string& /*machine*/) { return false; }

}  // namespace os
