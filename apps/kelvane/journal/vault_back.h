// What taking a run back asks of vaults: a check-in becomes a further iteration with the content before the run, a
// check-out is as it was.
#pragma once

#include <string>
#include <vector>

#include "headless/vault/vault.h"
#include "kelvane/journal/book.h"

namespace kelvane {

struct VaultStep {
  std::wstring vault;  // its folder
  headless::ObjectName object;
  headless::ObjectRecord before;  // as the run found it; without iterations: it wasn't there
  std::size_t iterations = 0;     // behind the run
  std::string did;                // "checked in as A.3 with the content of A.1"; empty: nothing is to be done
  std::string conflict;           // "GEAR.PRT was checked in since"; empty: none
  std::string stays;              // what nothing takes back; empty: nothing
};

// Looks at the vaults; changes nothing. kept: the folder of what the run's journal keeps.
std::vector<VaultStep> vaultSteps(const RunJournal& journal, const std::wstring& kept);
// Empty, or what failed. who: the workspace of the run.
std::string takeBack(const VaultStep& step, const headless::WorkspaceName& who);
headless::WorkspaceName workspaceOf(const RunJournal& journal);

}  // namespace kelvane
