// An element for a list or a filter, made from the row of its key: what it can't do without, with values of its kinds.
#pragma once

#include <string>

#include "actions/action.h"
#include "documents/predicates.h"

namespace kelvane {

// <task type="renameLayer" version="3" forPRT="true" forASM="true" forDRW="true" forEF="false" namef_0="NAME" .../>
std::string example(const actions::Action& action);
// <item type="isInstance" filtertype="true" opand="true"/>
std::string example(const documents::Predicate& predicate);

}  // namespace kelvane
