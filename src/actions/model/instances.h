// What the actions with `forInstances` have in common.
#pragma once

#include <optional>

#include "creo/ProFamtable.h"
#include "engine/task.h"

namespace actions {

// After the filter. An instance is refused by forInstances "false": then the action's result is given, and the log has
// the reason. Instances and generics are named in the log. generic: set to whether the model is a part or an assembly
// with a family table and forInstances is "true".
std::optional<engine::Outcome> passInstances(const engine::Task& task, bool& generic);

// Names instances and generics in the log. Is the model a part or an assembly with a family table, and `forInstances`
// "true"?
bool announceFamily(const engine::Task& task);

// Each instance of a model's own family table, built in memory for the time of the call. One that can't be built has
// its line and is passed over; one that was in memory stays there. False: not all of them were visited.
bool visitInstances(creo::ProMdl generic,
                    creo::FunctionRef<void(const creo::ProFaminstance& instance, creo::ProMdl model)> visit);

}  // namespace actions
