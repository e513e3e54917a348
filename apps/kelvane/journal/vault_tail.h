// What a run that broke off left in the vaults it was connected with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kelvane/journal/book.h"
#include "os/lock.h"

namespace kelvane {

class VaultTail {
 public:
  // Locks the vaults of the run, so that nobody is at work there for as long as this lives, and looks at what stands
  // behind its last boundary.
  explicit VaultTail(const RunJournal& journal);

  // Why the vaults can't be asked though the open turn has changes there; empty: they can.
  [[nodiscard]] const std::string& failed() const { return failed_; }
  // The deeds up to this number stay: somebody has worked with an object since. 0: none does.
  [[nodiscard]] int stays() const { return stays_; }
  // Folders of the vaults in which a dead writer may have left temporary files.
  [[nodiscard]] const std::vector<std::wstring>& folders() const { return folders_; }
  // "SHAFT.PRT was changed in the vault since: what the run did up to there stays", and vaults that can't be asked.
  [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

  struct Taken {
    std::vector<std::string> objects;  // the paths of their records
    std::string failed;                // empty: all that doesn't stay is as it was
  };
  // Gives the objects the records that they had, and takes iterations away that none of them names any more. kept: the
  // folder of what the journal keeps.
  [[nodiscard]] Taken takeBack(const std::wstring& kept) const;

 private:
  void lockVaults(const RunJournal& journal);
  void findTouched();

  std::vector<Deed> tail_;  // on vaults
  std::vector<std::unique_ptr<os::FileLock>> locks_;
  std::string failed_;
  int stays_ = 0;
  std::vector<std::wstring> folders_;
  std::vector<std::string> lines_;
};

// "SHAFT.PRT", of a record's path.
std::string vaultLabel(const std::string& path);

}  // namespace kelvane
