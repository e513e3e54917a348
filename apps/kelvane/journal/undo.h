// Takes a run back: what that would do, and doing it.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "kelvane/journal/effects.h"
#include "kelvane/journal/journal.h"
#include "kelvane/journal/recovery.h"
#include "kelvane/journal/vault_back.h"

namespace kelvane {

class UndoPlan {
 public:
  // A Fault for a run whose journal has no records. Of one without an end what stands behind its last boundary is left
  // out: that is taken back before.
  // outside: what lies there and isn't to be touched is a conflict.
  UndoPlan(const Book& book, const std::string& run, Outside outside);

  // Lines of what somebody changed since; with them their group is left out where conflicts are skipped.
  [[nodiscard]] const std::vector<std::string>& conflicts() const { return conflicts_; }
  // What nothing takes back: programs, requests, objects that are new in a vault; each once.
  [[nodiscard]] std::vector<std::string> stays() const;
  // "remove gear.prt.2", "rename wheel.prt.1 to gear.prt.1", "put back reports/mass.csv", of what has no conflict.
  [[nodiscard]] std::vector<std::string> lines() const;
  [[nodiscard]] bool isNothing() const { return lines().empty() && conflicts_.empty(); }
  [[nodiscard]] const RunJournal& journal() const { return journal_; }

  struct Done {
    int removed = 0, renamed = 0, putBack = 0, vault = 0;
    std::string failed;  // empty, or why it ended; the group before it is done, its own is half done
  };
  // Takes back what has no conflict. reached: called behind each group; isToStop: asked before each.
  [[nodiscard]] Done carryOut(const std::function<std::error_code(const Record&)>& reached,
                              const std::function<bool()>& isToStop) const;

 private:
  void leaveOutVaults(const std::set<std::string>& barred);
  void findNewer();
  void bindVault();
  void tellConflicts();
  // Who wrote what the line begins with: " by run 0005"; empty: no run that is known.
  [[nodiscard]] std::string writerOf(const std::string& line) const;

  const Book& book_;
  RunJournal journal_;
  Effects effects_;
  std::map<int, Back> groups_;
  std::vector<VaultStep> vault_;
  std::map<std::string, int> groupOfStem_;
  std::set<int> barred_;  // groups with a conflict
  std::vector<std::string> conflicts_;
};

// That of the run which `undo` means where none is named: the last one that wrote, hasn't been taken back and left
// something to be.
struct LastPlan {
  std::unique_ptr<UndoPlan> plan;       // null: there is none
  std::vector<std::string> passedOver;  // runs behind it that wrote, and of which nothing is left; the newest first
};
LastPlan planOfLast(const Book& book, Outside outside);

}  // namespace kelvane
