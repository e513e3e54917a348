// Faults of the tables that a list's actions read, as far as they show without a model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/xml.h"

namespace kelvane {

// Does an action of that key read the table that its `path` names?
bool readsTable(std::string_view type);
// What is wrong in such a table: records that are refused, and models that are named by an expression that doesn't
// compile. task: says how the table is read.
std::vector<std::string> tableFaults(const core::XmlNode& task, const std::string& bytes);

}  // namespace kelvane
