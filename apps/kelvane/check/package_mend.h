// The lists and filters of a package's folder, mended on the disk.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kelvane/base/console.h"
#include "kelvane/check/finding.h"
#include "kelvane/package/source.h"

namespace kelvane {

struct MendOrder {
  std::string folder;  // as a person writes it
  bool writes = true;  // else it only shows
  std::function<bool(const Finding& finding)> isMeant;
};
// Shows as results the changed lines of each file, once it is written.
// findings: of the whole package. Gives those that are left. A Fault when a file can't be written, or another program
// wrote it meanwhile; those before it stay mended.
std::vector<Finding> mendPackage(const MendOrder& order, const PackageSource& package, std::vector<Finding> findings,
                                 Console& console);

}  // namespace kelvane
