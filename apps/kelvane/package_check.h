// What of a package would not run, and what outside it it uses.
#pragma once

#include <vector>

#include "kelvane/finding.h"
#include "kelvane/package_source.h"

namespace kelvane {

// In the order of the members, within a member by line.
std::vector<Finding> checkPackage(const PackageSource& package);

}  // namespace kelvane
