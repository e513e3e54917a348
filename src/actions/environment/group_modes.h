// The ways in which a group runs its tasks, a file each. The group's frame has tested its version and filter.
#pragma once

#include "engine/task.h"

namespace actions {

// Once on each sheet of a drawing, with the model current that the sheet shows. Nothing on another model.
void runEachSheet(const engine::Task& task);  // sheet_group.cpp

}  // namespace actions
