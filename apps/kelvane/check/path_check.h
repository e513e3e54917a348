// Paths of a list into its package, where they are known without a model.
#pragma once

#include <vector>

#include "kelvane/check/attribute_check.h"
#include "kelvane/package/source.h"

namespace kelvane {

// Files and folders that the package lacks, and faults of the tables among them.
std::vector<AttributeFault> pathFaults(const PackageSource& package, const core::XmlNode& task,
                                       const actions::Action& action);

}  // namespace kelvane
