#include "headless/vault/vault_files.h"

#include <set>

#include "os/confine.h"
#include "os/durable.h"
#include "os/surroundings.h"

namespace headless {

// A vault that the session was connected with is open to its client, whatever a confined list may touch itself.
os::Result<std::string> VaultFiles::read(const std::wstring& path) const {
  const os::OwnWork client;
  const auto present = withheld_.find(path);
  if (present == withheld_.end()) return os::files().read(path);
  if (!present->second) return {{}, std::make_error_code(std::errc::no_such_file_or_directory)};
  return {*present->second, {}};
}

std::error_code VaultFiles::write(const std::wstring& path, std::string_view bytes) {
  if (withhold_) {
    withheld_[path] = std::string(bytes);
    return {};
  }
  const os::OwnWork client;
  if (const auto error = os::files().createFolders(os::folderOf(path))) return error;
  // What failed before is told before, and not as a write that was done all the same.
  if (const auto error = os::settleWritten()) return error;
  if (const auto error = os::files().write(path, bytes)) return error;
  return os::settleWritten();
}

std::error_code VaultFiles::remove(const std::wstring& path) {
  const os::OwnWork client;
  if (!withhold_) return os::files().remove(path);
  withheld_[path].reset();
  return {};
}

std::vector<std::wstring> VaultFiles::names(const std::wstring& folder) const {
  const os::OwnWork client;
  std::set<std::wstring> found;
  for (const os::Entry& entry : os::files().list(folder).value)
    if (!entry.isFolder) found.insert(entry.name);
  for (auto at = withheld_.lower_bound(folder); at != withheld_.end() && at->first.starts_with(folder); ++at) {
    const std::wstring name = at->first.substr(folder.size());
    if (name.find(L'\\') != name.npos) continue;
    if (at->second)
      found.insert(name);
    else
      found.erase(name);
  }
  return {found.begin(), found.end()};
}

}  // namespace headless
