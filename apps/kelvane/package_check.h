// What of a package would not run.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kelvane/package_source.h"

namespace kelvane {

struct Finding {
  std::string file;      // member of the package
  std::size_t line = 0;  // from 1; 0 concerns the whole file
  std::string text;
};
// In the order of the members, within a member by line.
std::vector<Finding> checkPackage(const PackageSource& package);
// "actionlists/clean.xml:12: unknown action 'delModelParameter'; did you mean 'deleteModelParameter'?"
std::string shown(const Finding& finding);

}  // namespace kelvane
