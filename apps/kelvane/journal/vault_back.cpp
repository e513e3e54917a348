#include "kelvane/journal/vault_back.h"

#include <algorithm>
#include <map>

#include "headless/store/names.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/words.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

constexpr int kLockWait = 3000;  // milliseconds

bool isOf(const headless::CheckOutRecord& checkOut, const headless::WorkspaceName& who) {
  return headless::sameName(checkOut.user, who.user) && headless::sameName(checkOut.workspace, who.workspace);
}

std::unique_ptr<headless::Vault> opened(const std::wstring& folder, std::string& failed) {
  headless::VaultAnswer answer;
  auto vault = headless::Vault::open(folder, false, answer);
  if (!vault) failed = text::toUtf8(answer.reason);
  return vault;
}

std::string nameOfIteration(const headless::ObjectRecord& object, std::size_t place) {
  return text::toUtf8(headless::iterationText(object, static_cast<int>(place)));
}

class Looker {
 public:
  Looker(const RunJournal& journal, const std::wstring& kept) : who_(workspaceOf(journal)), kept_(kept) {
    for (const Record& record : journal.told)
      if (memberText(record, "record") == "checkIn")
        checkedIn_[memberText(record, "object")] = memberText(record, "as");
  }

  // deed: the first one on the object's record; now: what the run left of it.
  VaultStep step(const Deed& deed, const Content& now) const {
    VaultStep step;
    const std::wstring path = JournalPaths::system(deed.path);
    step.vault = os::folderOf(path.substr(0, os::folderOf(path).size() - 1));
    if (deed.had)
      (void)headless::readRecord(os::files().read(kept_ + text::fromUtf8(deed.had->kept)).value, step.before);
    const auto bytes = os::files().read(path);
    headless::ObjectRecord present;
    if (!bytes || headless::readRecord(bytes.value, present)) {
      step.conflict = JournalPaths::shown(deed.path) + " can't be read";
      return step;
    }
    step.object = {text::fromUtf8(present.name), present.type};
    step.iterations = present.iterations.size();
    if (step.before.iterations.empty()) {
      step.stays = label(step) + " stays in the vault, which didn't have it";
    } else if (contentOf(bytes.value).isSameAs(now) || isAsItWasLeft(step, present)) {
      judge(step, present);
    } else if (!isBackAlready(step, present)) {
      step.conflict = label(step) + " was changed in the vault since";
    }
    return step;
  }

 private:
  static std::string label(const VaultStep& step) { return text::toUtf8(step.object.label()); }

  void judge(VaultStep& step, const headless::ObjectRecord& present) const {
    const std::size_t had = step.before.iterations.size();
    if (present.checkOut && !isOf(*present.checkOut, who_)) {
      step.conflict = label(step) + " is checked out by " + present.checkOut->user;
      return;
    }
    if (!isSameContent(step, had, present.iterations.size()))
      step.did = "checked in with the content of " + nameOfIteration(present, had);
    const bool wasHere = step.before.checkOut && isOf(*step.before.checkOut, who_);
    if (!wasHere && present.checkOut) addPiece(step.did, "its check-out given back");
    if (wasHere && (!present.checkOut || !step.did.empty())) addPiece(step.did, "checked out again");
    if (headless::memberOf(step.before, who_) && !headless::memberOf(present, who_))
      addPiece(step.did, "in the workspace again");
  }

  // What came since was taken back: further iterations of that revision end with the content that the run left, and
  // nobody has it checked out; where the run checked nothing in, nobody else has.
  bool isAsItWasLeft(const VaultStep& step, const headless::ObjectRecord& present) const {
    const auto checkedIn = checkedIn_.find(label(step));
    const bool isChecked = checkedIn != checkedIn_.end();
    if (present.checkOut && (isChecked || !isOf(*present.checkOut, who_))) return false;
    if (present.location != step.before.location) return false;
    const std::size_t newest = present.iterations.size();
    std::size_t left = isChecked ? newest : std::min(newest, step.before.iterations.size());
    while (isChecked && left > 0 && nameOfIteration(present, left) != checkedIn->second) --left;
    return left > 0 && present.iterations[left - 1].revision == present.iterations.back().revision &&
           isSameContent(step, left, newest);
  }

  static bool isSameContent(const VaultStep& step, std::size_t one, std::size_t other) {
    if (one == other) return true;
    std::string failed, first, second;
    const auto vault = opened(step.vault, failed);
    return vault && vault->content(step.object, static_cast<int>(one), first) &&
           vault->content(step.object, static_cast<int>(other), second) && first == second;
  }

  // A further iteration has the old content, and who had it checked out is as before.
  static bool isBackAlready(const VaultStep& step, const headless::ObjectRecord& present) {
    if (present.checkOut.operator bool() != step.before.checkOut.operator bool()) return false;
    if (present.iterations.size() == step.before.iterations.size()) return true;
    return isSameContent(step, step.before.iterations.size(), present.iterations.size());
  }

  headless::WorkspaceName who_;
  std::wstring kept_;
  std::map<std::string, std::string> checkedIn_;  // by object: its last iteration of the run, "A.2"
};

headless::VaultAnswer carryOut(headless::Vault& vault, const VaultStep& step, const headless::WorkspaceName& who) {
  headless::ObjectRecord present;
  headless::VaultAnswer answer = vault.object(step.object, present);
  const std::size_t had = step.before.iterations.size();
  const headless::MemberRecord* member = headless::memberOf(step.before, who);
  std::string bytes, newestBytes;
  if (answer) answer = vault.content(step.object, static_cast<int>(had), bytes);
  if (answer) answer = vault.content(step.object, static_cast<int>(present.iterations.size()), newestBytes);
  const bool isOther = bytes != newestBytes;
  if (answer && isOther) {
    const headless::IterationRecord& newest = present.iterations.back();
    answer = vault.checkIn(step.object, who, {newest.revision, present.location, newest.iteration + 1}, bytes,
                           member ? member->version : 0);
    if (answer && !member) answer = vault.leave(step.object, who);
    if (answer) present.checkOut.reset();
  }
  if (answer && member && !isOther && !headless::memberOf(present, who))
    answer = vault.enter(step.object, who, member->version);
  const bool wasHere = step.before.checkOut && isOf(*step.before.checkOut, who);
  if (answer && wasHere && !present.checkOut) answer = vault.checkOut(step.object, who, step.before.checkOut->names);
  if (answer && !wasHere && present.checkOut) answer = vault.release(step.object);
  return answer;
}

}  // namespace

headless::WorkspaceName workspaceOf(const RunJournal& journal) {
  return {memberText(journal.begin, "vaultUser"), memberText(journal.begin, "workspace")};
}

std::vector<VaultStep> vaultSteps(const RunJournal& journal, const std::wstring& kept) {
  std::map<std::string, std::pair<const Deed*, const Deed*>> ofObject;  // the first and the last one
  for (const Deed& deed : journal.deeds) {
    if (!isVaultRecord(deed.path) || deed.kind != DeedKind::write) continue;
    ofObject.try_emplace(deed.path, &deed, &deed).first->second.second = &deed;
  }
  std::vector<VaultStep> steps;
  steps.reserve(ofObject.size());
  const Looker looker(journal, kept);
  for (const auto& [path, deeds] : ofObject) steps.push_back(looker.step(*deeds.first, *deeds.second->now));
  return steps;
}

std::string takeBack(const VaultStep& step, const headless::WorkspaceName& who) {
  std::string failed;
  const auto vault = opened(step.vault, failed);
  if (!vault) return failed;
  std::unique_ptr<os::FileLock> lock;
  headless::VaultAnswer answer = vault->lock(kLockWait, lock);
  if (answer) answer = carryOut(*vault, step, who);
  return answer ? std::string() : text::toUtf8(step.object.label()) + ": " + text::toUtf8(answer.reason);
}

}  // namespace kelvane
