#include "kelvane/journal/paths.h"

#include "headless/store/folder.h"
#include "kelvane/base/places.h"
#include "kelvane/show/model_folder.h"
#include "os/paths.h"
#include "os/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

constexpr std::string_view kUnpacked = "open_kvz_", kObjects = "objects/", kContents = "contents/",
                           kAttachments = "attachments/", kWorkspaces = "workspaces/",
                           kWorkspaceRecord = "/workspace.json";

std::string withSlash(std::string path) {
  if (!path.ends_with('/')) path += '/';
  return path;
}

// rest: the path in its vault.
bool isCountedInVault(std::string_view rest) {
  for (const std::string_view folder : {kObjects, kContents, kAttachments})
    if (rest.starts_with(folder)) return true;
  return rest.starts_with(kWorkspaces) && !rest.ends_with(kWorkspaceRecord);
}

std::string models() { return std::string(1, static_cast<char>(kModelsLetter)) + ":/"; }

}  // namespace

JournalPaths::JournalPaths(const std::wstring& folder, const std::vector<std::string>& vaults)
    : models_(withSlash(os::mounts().machine(folder))),
      temp_(os::mounts().has(L't') ? withSlash(os::mounts().machine(L"t:\\")) : std::string()),
      journal_(withSlash(os::mounts().machine(folder + std::wstring(kJournalFolder)))) {
  for (const std::string& vault : vaults) vaults_.push_back(withSlash(vault));
}

std::optional<std::string> JournalPaths::written(std::wstring_view path) const {
  return fromMachine(os::mounts().machine(path));
}

std::optional<std::string> JournalPaths::writtenNew(std::wstring_view path) const {
  const std::wstring name = os::nameOf(path);
  const bool isPlain = !name.empty() && name != L"." && name != L".." && name.find(L'\0') == name.npos;
  if (!isPlain) return written(path);
  return fromMachine(withSlash(os::mounts().machine(os::folderOf(path))) + text::toUtf8(name));
}

std::optional<std::string> JournalPaths::fromMachine(const std::string& machine) const {
  if (machine.starts_with(journal_)) return std::nullopt;
  if (!temp_.empty() && machine.starts_with(temp_)) {
    const std::string rest = machine.substr(temp_.size());
    if (!rest.starts_with(kUnpacked)) return std::nullopt;
    return std::string(kTempPrefix) + rest;
  }
  for (const std::string& vault : vaults_) {
    if (!machine.starts_with(vault)) continue;
    if (!isCountedInVault(std::string_view(machine).substr(vault.size()))) return std::nullopt;
    return std::string(kVaultPrefix) + machine;
  }
  return machine.starts_with(models_) ? machine.substr(models_.size()) : machine;
}

bool isVaultRecord(std::string_view written) {
  const std::size_t slash = written.rfind('/');
  return isOfVault(written) && slash != written.npos && written.substr(0, slash + 1).ends_with("/objects/");
}

std::wstring JournalPaths::system(std::string_view written) {
  if (isOfTemp(written)) return os::withBackslashes(L"t:/" + text::fromUtf8(written.substr(kTempPrefix.size())));
  if (isOfVault(written)) return os::mounts().system(written.substr(kVaultPrefix.size()));
  if (os::isWhole(written)) return os::mounts().system(written);
  return os::withBackslashes(text::fromUtf8(models() + std::string(written)));
}

std::string JournalPaths::shown(std::string_view written) {
  return isOfTemp(written) || isOfVault(written) ? kelvane::shown(system(written)) : std::string(written);
}

std::optional<WrittenVersion> writtenVersion(std::string_view written) {
  if (isOfVault(written)) return std::nullopt;
  const std::size_t slash = written.rfind('/') + 1;
  const auto file = headless::documentFile(text::fromUtf8(written.substr(slash)));
  if (!file) return std::nullopt;
  const std::string key = text::toUtf8(text::lower(headless::modelKey(file->name, file->type)));
  return WrittenVersion{std::string(written.substr(0, slash)) + key, file->version};
}

}  // namespace kelvane
