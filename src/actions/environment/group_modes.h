// The modes of groupActions: each says on which models the tasks of the group run. All leave the model that the group
// was given displayed, and take what they built out of memory.
#pragma once

#include <string_view>

#include "actions/task.h"

namespace actions {

void runOnInstances(const Task& task);       // instance_group.cpp
void runOnNewDrawing(const Task& task);      // drawing_group.cpp
void runOnDependencies(const Task& task);    // dependency_group.cpp
void runOnOtherModel(const Task& task);      // model_group.cpp
void runOnRepresentation(const Task& task);  // rep_group.cpp
// Once on each sheet of a drawing, with the model current that the sheet shows. Nothing on another model.
void runEachSheet(const Task& task);  // sheet_group.cpp

// Runs the group's tasks on a model that is displayed for them. extension: as the tasks are told it.
void runTasksOn(const Task& task, creo::ProMdl model, std::wstring_view name, std::wstring_view extension);
// ".PRT" for a part, ".ASM" for an assembly; empty for anything else.
std::wstring_view solidExtension(creo::ProMdl model);
// Does the run or a group work on the model? Then it isn't to be taken out of memory.
bool isUnderWork(creo::ProMdl model);

// Is it a value of `reworkMode`?
bool isGroupMode(std::wstring_view value);
// Do the tasks of a group in that mode run on the group's own model?
bool groupKeepsModel(std::wstring_view value);

}  // namespace actions
