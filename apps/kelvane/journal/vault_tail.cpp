#include "kelvane/journal/vault_tail.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "headless/vault/vault.h"
#include "kelvane/base/places.h"
#include "kelvane/journal/effects.h"
#include "kelvane/journal/taking_back.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

constexpr int kLockWait = 3000;  // milliseconds
constexpr std::string_view kContents = "/contents/", kAttachments = "/attachments/", kWorkspaces = "/workspaces/",
                           kJson = ".json";

// The record of an object and the place of one of its iterations, of the path of what belongs to that iteration.
struct OfIteration {
  std::string record;
  std::size_t place = 0;
};
std::optional<OfIteration> iterationOf(const std::string& path) {
  if (path.find(kWorkspaces) != path.npos) return std::nullopt;
  for (const std::string_view folder : {kContents, kAttachments}) {
    const std::size_t at = path.rfind(folder);
    if (at == path.npos) continue;
    const std::size_t start = at + folder.size();
    const std::string name = path.substr(start, path.find('/', start) - start);
    const std::size_t dot = name.rfind('.');
    OfIteration found;
    if (dot == name.npos) return std::nullopt;
    if (std::from_chars(name.data() + dot + 1, name.data() + name.size(), found.place).ec != std::errc())
      return std::nullopt;
    found.record = path.substr(0, at) + "/objects/" + name.substr(0, dot) + std::string(kJson);
    return found;
  }
  return std::nullopt;
}

// Its object has it, also where somebody else gave it that.
bool isNamed(const OfIteration& iteration) {
  headless::ObjectRecord record;
  const auto bytes = os::files().read(JournalPaths::system(iteration.record));
  return bytes && (headless::readRecord(bytes.value, record) || record.iterations.size() >= iteration.place);
}

// Those of all users.
void addWorkspaces(const std::wstring& folder, std::vector<std::wstring>& into) {
  for (const os::Entry& user : os::files().list(folder).value)
    for (const os::Entry& workspace : os::files().list(folder + user.name + L'\\').value)
      if (workspace.isFolder) into.push_back(folder + user.name + L'\\' + workspace.name + L'\\');
}

std::string takeBackEffects(const Effects& effects, const std::vector<Deed>& deeds, const std::wstring& kept) {
  const std::map<int, Back> groups = backOf(effects, deeds, &lookAt, true);
  for (const auto& [group, back] : groups) {
    if (!back.lacking.empty()) return back.lacking.front();
    if (std::string failed = keptFault(back, kept); !failed.empty()) return failed;
  }
  for (const auto& [group, back] : groups)
    if (std::string failed = takeBack(back, kept); !failed.empty()) return failed;
  return {};
}

}  // namespace

std::string vaultLabel(const std::string& path) {
  const std::wstring name = os::nameOf(JournalPaths::system(path));
  return text::toUtf8(text::upper(name.substr(0, name.size() - std::min(name.size(), kJson.size()))));
}

VaultTail::VaultTail(const RunJournal& journal) {
  for (const Deed& deed : journal.deeds)
    if (deed.turn == journal.turns && isOfVault(deed.path)) tail_.push_back(deed);
  lockVaults(journal);
  for (const Deed& deed : tail_) folders_.push_back(os::folderOf(JournalPaths::system(deed.path)));
  findTouched();
}

void VaultTail::lockVaults(const RunJournal& journal) {
  for (const std::string& folder : journal.begin.value("vaults", std::vector<std::string>())) {
    const std::wstring place = os::asFolder(os::mounts().system(folder));
    headless::VaultAnswer answer;
    const auto vault = headless::Vault::open(place, false, answer);
    if (answer) answer = vault->lock(kLockWait, locks_.emplace_back());
    if (answer) {
      for (const wchar_t* below : {L"", L"objects\\", L"contents\\"}) folders_.push_back(place + below);
      addWorkspaces(place + L"workspaces\\", folders_);
      continue;
    }
    const std::string reason = text::toUtf8(answer.reason);
    const bool isNeeded = std::any_of(tail_.begin(), tail_.end(), [&](const Deed& deed) {
      return deed.path.starts_with(std::string(kVaultPrefix) + folder + "/");
    });
    if (isNeeded && failed_.empty()) failed_ = reason;
    if (!isNeeded) lines_.push_back(reason + "; temporary files may be left there");
  }
}

void VaultTail::findTouched() {
  if (!failed_.empty()) return;
  for (const auto& [path, effect] : effectsOf(tail_, Part::vaults).files) {
    if (!isVaultRecord(path)) continue;
    const Present now = lookAt(path);
    if (!now.fault.empty()) failed_ = JournalPaths::shown(path) + " can't be read: " + now.fault;
    if (now.content ? isOfDeeds(tail_, path, *now.content) : !effect.before) continue;
    for (const Deed& deed : tail_)
      if (deed.path == path) stays_ = std::max(stays_, deed.number);
    lines_.push_back(vaultLabel(path) + " was changed in the vault since: what the run did up to there stays");
  }
}

// The records first: an object never names what isn't there.
VaultTail::Taken VaultTail::takeBack(const std::wstring& kept) const {
  std::vector<Deed> deeds = tail_;
  std::erase_if(deeds, [this](const Deed& deed) { return deed.number <= stays_; });
  Effects records, others;
  Taken taken;
  for (auto& [path, effect] : effectsOf(deeds, Part::vaults).files)
    (isVaultRecord(path) ? records : others).files.emplace(path, effect);
  for (const auto& [path, effect] : records.files) {
    const Present now = lookAt(path);
    if (now.content && !(effect.before && effect.before->isSameAs(*now.content))) taken.objects.push_back(path);
  }
  taken.failed = takeBackEffects(records, deeds, kept);
  if (!taken.failed.empty()) return taken;
  std::erase_if(others.files, [&](const auto& entry) {
    const Present now = lookAt(entry.first);
    if (now.content && !isOfDeeds(deeds, entry.first, *now.content)) return true;
    const auto iteration = iterationOf(entry.first);
    return iteration && isNamed(*iteration);
  });
  taken.failed = takeBackEffects(others, deeds, kept);
  if (taken.failed.empty()) removeEmptyFolders(effectsOf(deeds, Part::vaults).folders);
  return taken;
}

}  // namespace kelvane
