// From a task element to the action that its `type` names.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "actions/action.h"
#include "actions/subject.h"
#include "core/xml.h"

namespace actions {

// The rows of all floors, once, by who gathers them.
void setActionTable(std::vector<Action> rows);
// All keys, in the order of comparison; each key once.
std::span<const Action> actionTable();
// The row of a key, or null. One hash probe.
const Action* findAction(std::wstring_view key);

// Runs one task. The subject takes Creo's current model when it has none.
Outcome dispatchAction(const core::XmlNode& task, Subject& subject);
// Runs the tasks of the first child named "subtasks", each with a copy of the subject.
void runSubtasks(const core::XmlNode& task, const Subject& subject);

}  // namespace actions
