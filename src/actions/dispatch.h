// From a task element to the action that its `type` names.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"
#include "actions/action.h"

namespace actions {

// What an action works on. extension: "PRT", ".PRT" in some groups; name and extension are empty without a model.
struct Subject {
  creo::ProMdl model;
  std::wstring name, extension;
};

// All keys, in the order of comparison; each key once.
std::span<const Action> actionTable();
// The row of a key, or null. One hash probe.
const Action* findAction(std::wstring_view key);

// Runs one task. The subject takes Creo's current model when it has none.
Outcome dispatchAction(const core::XmlNode& task, Subject& subject);
// Runs the tasks of the first child named "subtasks", each with a copy of the subject.
void runSubtasks(const core::XmlNode& task, const Subject& subject);

}  // namespace actions
