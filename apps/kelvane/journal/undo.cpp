#include "kelvane/journal/undo.h"

#include <algorithm>

#include "kelvane/base/backwards.h"
#include "kelvane/base/exit_codes.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/words.h"
#include "kelvane/journal/elsewhere.h"
#include "kelvane/journal/taking_back.h"
#include "kelvane/journal/vault_tail.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

std::string stemOf(const std::string& path) {
  const auto version = writtenVersion(path);
  return version ? version->stem : std::string();
}

std::string shownStem(const VaultStep& step) { return text::toUtf8(step.object.file()); }

bool hasWritten(const RunJournal& journal) { return !journal.deeds.empty(); }

}  // namespace

UndoPlan::UndoPlan(const Book& book, const std::string& run, Outside outside) : book_(book), journal_(book.read(run)) {
  if (journal_.begin.is_null()) throw Fault("the journal of run " + run + " has no records");
  if (journal_.isOpen())
    std::erase_if(journal_.deeds, [this](const Deed& deed) { return deed.turn == journal_.turns; });
  effects_ = effectsOf(journal_.deeds);
  const std::set<std::string> barred = outside == Outside::all ? std::set<std::string>() : notFromHere(book, journal_);
  const auto look = [&barred](const std::string& path) {
    return barred.contains(path) ? Present{{}, std::string(kNotFromHere)} : lookAt(path);
  };
  groups_ = backOf(effects_, journal_.deeds, look, false);
  std::erase_if(effects_.folders, [&barred](const std::string& folder) { return barred.contains(folder); });
  for (auto& [number, back] : groups_)
    if (std::string fault = keptFault(back, book_.keptOf(run)); !fault.empty())
      back.lacking.push_back(std::move(fault));
  const bool isVaultBarred = std::any_of(barred.begin(), barred.end(), &isOfVault);
  if (!isVaultBarred) vault_ = vaultSteps(journal_, book_.keptOf(run));
  for (const auto& [path, effect] : effects_.files)
    if (const std::string stem = stemOf(path); !stem.empty()) groupOfStem_[stem] = effect.group;
  findNewer();
  if (isVaultBarred) leaveOutVaults(barred);
  bindVault();
  tellConflicts();
}

// A version that came behind those of the run stands on them: taking these away would leave it without what it came
// from, and older content below it.
void UndoPlan::findNewer() {
  const bool isUndo = journal_.verb() == "undo";
  std::map<std::string, int> highest;  // of the versions that the run found or left
  std::set<std::string> judged;        // a newer version of a document that only lost old ones was there before
  for (const Deed& deed : journal_.deeds)
    if (deed.kind == DeedKind::rename) judged.insert(stemOf(deed.path));
  std::set<std::string> folders;
  for (const auto& [path, effect] : effects_.files) {
    const auto version = writtenVersion(path);
    if (!version || groups_[effect.group].isNothing()) continue;
    folders.insert(path.substr(0, path.rfind('/') + 1));
    int& number = highest[version->stem];
    number = std::max(number, version->number);
    if (effect.after || isUndo) judged.insert(version->stem);
  }
  for (const std::string& folder : folders) {
    for (const os::Entry& entry : os::files().list(JournalPaths::system(folder)).value) {
      const std::string path = folder + text::toUtf8(entry.name);
      const auto version = entry.isFolder ? std::nullopt : writtenVersion(path);
      if (!version || effects_.files.contains(path)) continue;
      const auto known = highest.find(version->stem);
      if (known == highest.end() || !judged.contains(version->stem) || version->number <= known->second) continue;
      groups_[groupOfStem_.at(version->stem)].conflicts.push_back(JournalPaths::shown(path) + " was written since");
    }
  }
}

// With them the documents here of what it did there.
void UndoPlan::leaveOutVaults(const std::set<std::string>& barred) {
  for (const std::string& path : barred) {
    if (!isVaultRecord(path)) continue;
    const std::string line = vaultLabel(path).append(" in the vault").append(kNotFromHere);
    const auto group = groupOfStem_.find(text::toUtf8(text::lower(text::fromUtf8(vaultLabel(path)))));
    (group == groupOfStem_.end() ? conflicts_ : groups_[group->second].conflicts).push_back(line);
  }
}

// An object of a vault and its document here go together, and so do all objects of a group.
void UndoPlan::bindVault() {
  const auto groupOf = [this](const VaultStep& step) -> Back* {
    const auto group = groupOfStem_.find(shownStem(step));
    return group == groupOfStem_.end() ? nullptr : &groups_[group->second];
  };
  for (VaultStep& step : vault_)
    if (Back* const back = groupOf(step); back && !step.conflict.empty())
      back->conflicts.push_back(std::exchange(step.conflict, std::string()));
  for (VaultStep& step : vault_)
    if (const Back* const back = groupOf(step); back && !(back->conflicts.empty() && back->lacking.empty()))
      step.did.clear();
}

std::string UndoPlan::writerOf(const std::string& line) const {
  const auto isOf = [&](const std::string& path) {
    return !path.empty() && line.starts_with(JournalPaths::shown(path) + " ");
  };
  const std::vector<std::string> runs = book_.runs();
  for (const std::string& run : Backwards(runs)) {
    if (run == journal_.run) break;
    for (const Deed& deed : book_.read(run).deeds)
      if (isOf(deed.path) || isOf(deed.to)) return " by run " + run;
  }
  return {};
}

void UndoPlan::tellConflicts() {
  constexpr std::size_t kMostLooked = 20;
  for (auto& [number, back] : groups_) {
    std::vector<std::string>& lines = back.conflicts;
    lines.insert(lines.end(), back.lacking.begin(), back.lacking.end());
    if (!lines.empty()) barred_.insert(number);
    for (const std::string& line : lines)
      conflicts_.push_back(
          line + (conflicts_.size() < kMostLooked && !line.ends_with(kNotFromHere) ? writerOf(line) : std::string()));
  }
  for (const VaultStep& step : vault_)
    if (!step.conflict.empty()) conflicts_.push_back(step.conflict);
  if (journal_.lost > 0)
    conflicts_.push_back(counted(static_cast<std::size_t>(journal_.lost), "record") +
                         " of the journal can't be read; what was told there stays as it is");
}

std::vector<std::string> UndoPlan::stays() const {
  std::vector<std::string> all;
  std::map<std::string, std::size_t> times;
  for (const Record& record : journal_.told)
    if (memberText(record, "record") == "sent" && ++times[memberText(record, "what")] == 1)
      all.push_back(memberText(record, "what"));
  for (std::string& what : all)
    if (const std::size_t count = times[what]; count > 1) what += " (" + std::to_string(count) + " times)";
  for (const VaultStep& step : vault_)
    if (!step.stays.empty()) all.push_back(step.stays);
  return all;
}

std::vector<std::string> UndoPlan::lines() const {
  std::vector<std::string> all;
  for (const auto& [number, back] : groups_) {
    if (barred_.contains(number)) continue;
    for (const std::string& path : back.removed) all.push_back("remove " + JournalPaths::shown(path));
    for (const auto& [from, to] : back.renamed)
      all.push_back("rename " + JournalPaths::shown(from) + " to " + JournalPaths::shown(to));
    for (const auto& [path, kept] : back.written) all.push_back("put back " + JournalPaths::shown(path));
  }
  for (const VaultStep& step : vault_)
    if (!step.did.empty()) all.push_back("vault " + text::toUtf8(step.object.label()) + ": " + step.did);
  return all;
}

UndoPlan::Done UndoPlan::carryOut(const std::function<std::error_code(const Record&)>& reached,
                                  const std::function<bool()>& isToStop) const {
  Done done;
  const auto reach = [&](const std::string& what) {
    if (const auto error = reached({{"record", "taken"}, {"group", what}}))
      done.failed = "the journal can't be written: " + error.message();
    return done.failed.empty();
  };
  // Not behind the last one: an undo that has no rest is whole.
  const auto isStopped = [&] {
    if (isToStop()) done.failed = "ended early; undo once more takes back the rest";
    return !done.failed.empty();
  };
  // The vault first: where it refuses, the document here stays what it has.
  for (const VaultStep& step : vault_) {
    if (step.did.empty()) continue;
    if (isStopped()) return done;
    done.failed = kelvane::takeBack(step, workspaceOf(journal_));
    if (!done.failed.empty() || !reach(text::toUtf8(step.object.label()))) return done;
    ++done.vault;
  }
  for (const auto& [number, back] : groups_) {
    if (barred_.contains(number) || back.isNothing()) continue;
    if (isStopped()) return done;
    done.failed = takeBack(back, book_.keptOf(journal_.run));
    if (!done.failed.empty() || !reach(std::to_string(number))) return done;
    done.removed += static_cast<int>(back.removed.size());
    done.renamed += static_cast<int>(back.renamed.size());
    done.putBack += static_cast<int>(back.written.size());
  }
  removeEmptyFolders(effects_.folders);
  return done;
}

LastPlan planOfLast(const Book& book, Outside outside) {
  LastPlan last;
  std::set<std::string> undone;
  const std::vector<std::string> runs = book.runs();
  for (const std::string& run : Backwards(runs)) {
    if (undone.contains(run)) continue;
    const RunJournal journal = book.read(run);
    if (journal.verb() == "undo") {
      const bool isWhole = !journal.end.is_null() && journal.end.value("code", kErrors) == kFine;
      if (isWhole) undone.insert(memberText(journal.begin, "of"));
    } else if (hasWritten(journal)) {
      last.plan = std::make_unique<UndoPlan>(book, run, outside);
      if (!last.plan->isNothing()) return last;
      last.passedOver.push_back(run);
    }
  }
  last.plan.reset();
  return last;
}

}  // namespace kelvane
