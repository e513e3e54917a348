// The frame of every action, and the conditions that it asks.
#pragma once

#include "actions/action.h"
#include "actions/task.h"

namespace actions {

// No switch of kinds is "false" and forEF isn't "true": then some actions don't ask the filter.
bool isForAll(const Task& task);
// Does it hold for the task's model? Without a word, but for the filter's own.
bool holds(const Action& action, const Condition& condition, const Task& task);
// The frame of every action: title, version, conditions, counting; then the function.
Outcome carryOut(const Action& action, const Task& task);

}  // namespace actions
