// What stands inside an action's element, held against what its key reads there.
#pragma once

#include <vector>

#include "kelvane/check/attribute_check.h"

namespace kelvane {

struct ChildFault {
  const core::XmlNode* at;
  AttributeFault fault;
};
// Elements that are misspelt or that the action reads one of alone, and options that lack something or stand elsewhere
// than they are read. Passed over are elements of other programs, and what is told where the right one is missed.
std::vector<ChildFault> childFaults(const core::XmlNode& task, const actions::Action& action);

// Of an element that has the switches of an action and a filter as it has, but is none: attributes that aren't read and
// switches that are neither on nor off.
std::vector<AttributeFault> switchFaults(const core::XmlNode& node);
// The same of a list's filter; of its attributes those alone that are misspelt.
std::vector<AttributeFault> listFilterFaults(const core::XmlNode& filter);

}  // namespace kelvane
