// Names that a package brings along and Windows takes for something else, or not at all.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kelvane/check/attribute_check.h"
#include "kelvane/check/finding.h"
#include "kelvane/package/source.h"

namespace kelvane {

// Why Windows has no file or folder of that name, as part of a sentence: "'NUL.csv' is a device". Empty: it may have.
// part: without separators.
std::string windowsFault(std::string_view part);

// Of the names of a package's members; each once for a folder that several lie in. Beside what Windows takes it finds
// those that a terminal shows otherwise than they are.
std::vector<Finding> memberNameFindings(const PackageSource& package);
// Of the paths in a task, as far as they are known without a model.
std::vector<AttributeFault> pathNameFaults(const core::XmlNode& task, const actions::Action& action);

}  // namespace kelvane
