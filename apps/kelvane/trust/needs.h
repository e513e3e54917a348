// What a package would need of the grants that a confined run asks, told from the rows before it runs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kelvane/package/source.h"
#include "os/grants.h"

namespace kelvane {

struct PackageNeed {
  std::string file;                          // member of the package
  std::size_t line = 0;                      // from 1
  std::string place;                         // the action as the log names it: "B3 - G0"; empty in a filter file
  std::string text;                          // "'path': 'k:\\templates\\a3.frm'"
  std::optional<os::Permission> permission;  // none: an act on the server, which --vault alone grants
  std::wstring resource;                     // as a grant names it; empty where only the run tells
  [[nodiscard]] bool isKnown() const { return !resource.empty() || permission == os::Permission::clipboard; }
};
// In the order of the documents and their lines. Variables of the environment are those of this process; a path is told
// up to the first value of a model. A member that can't be read needs nothing, as it can't run.
std::vector<PackageNeed> needsOf(const PackageSource& package);

// The grants that these take, each once, sorted.
std::vector<os::Need> grantsFor(const std::vector<PackageNeed>& needs);
// Those that the package takes, as far as it can be told, and that aren't granted.
std::vector<os::Need> lackingOf(const PackageSource& package, const os::Grants& granted);

}  // namespace kelvane
