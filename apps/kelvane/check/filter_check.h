// An item of a filter held against its predicate's row.
#pragma once

#include <vector>

#include "kelvane/check/attribute_check.h"

namespace kelvane {

// Of what its `type` names: unknown keys and attributes, missing ones, values that the predicate can't use.
std::vector<AttributeFault> predicateFaults(const core::XmlNode& item);
// The same, and what an item has that stands in a filter: its kind, how it is joined with the next one.
std::vector<AttributeFault> itemFaults(const core::XmlNode& item);

}  // namespace kelvane
