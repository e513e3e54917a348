// What the actions with `forInstances` have in common.
#pragma once

#include <optional>

#include "engine/task.h"

namespace actions {

// After the filter. An instance is refused by forInstances "false": then the action's result is given, and the log has
// the reason. Instances and generics are named in the log. generic: set to whether the model is a part or an assembly
// with a family table and forInstances is "true".
std::optional<engine::Outcome> passInstances(const engine::Task& task, bool& generic);

}  // namespace actions
