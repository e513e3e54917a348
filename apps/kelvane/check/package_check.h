// What of a package would not run, and what outside it it uses.
#pragma once

#include <string>
#include <vector>

#include "kelvane/check/finding.h"
#include "kelvane/package/source.h"

namespace kelvane {

// In the order of the members, within a member by line.
std::vector<Finding> checkPackage(const PackageSource& package);
// The lists and the filters among its members, "actionlists/clean.xml".
std::vector<std::string> documentsOf(const PackageSource& package);
// Of one of these as if it held these bytes; by line.
std::vector<Finding> checkDocument(const PackageSource& package, const std::string& member, std::string bytes);

}  // namespace kelvane
