// What the actions with `forInstances` have in common.
#pragma once

#include "actions/task.h"
#include "creo/ProFamtable.h"

namespace actions {

// Names instances and generics in the log. Is the model a part or an assembly with a family table, and `forInstances`
// "true"?
bool announceFamily(const Task& task);
// The attribute, where nothing but the log depends on "true".
constexpr core::Attribute kInstancesToo[] = {
    {.name = L"forInstances", .kind = core::Kind::flag, .words = L"false", .about = "false: instances are left alone"},
};

// Takes a model out of memory that came for a while. A refusal is tried once more; one that stays has a warning.
void letGo(creo::ProMdl model);

// Each instance of a model's own family table, built in memory for the time of the call. One that can't be built has
// its line and is passed over; one that was in memory stays there. False: not all of them were visited.
bool visitInstances(creo::ProMdl generic,
                    creo::FunctionRef<void(const creo::ProFaminstance& instance, creo::ProMdl model)> visit);

}  // namespace actions
