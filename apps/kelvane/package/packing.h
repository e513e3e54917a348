// Zip files that depend on nothing but their content.
#pragma once

#include <string>

#include "kelvane/package/source.h"

namespace kelvane {

// The bytes of a package with all members of the source, and the required readme files where the source lacks them. Two
// sources with the same members give the same bytes: members are sorted and carry one fixed time. A Fault when
// system/index.kvane is missing.
std::string packed(const PackageSource& source);

}  // namespace kelvane
