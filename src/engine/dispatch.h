// From a task element to the action that its `type` names.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"

namespace engine {

// What an action gives back; nothing stops a list.
enum Outcome : int {
  done = 0,  // also after a failure that was logged
  wrongVersion = 1,
  refused = 2,  // by the filter, or the action doesn't apply
  failed = 98,  // a visit that Creo ended; nobody asks
  notHandled = -25,
};

// What an action works on. extension: "PRT", ".PRT" in some groups; name and extension are empty without a model.
struct Subject {
  creo::ProMdl model;
  std::wstring name, extension;
};

class Task;  // engine/task.h

enum class Group { withoutModel, knownEmpty, modelNeeded, second };

struct ActionRow {
  std::wstring_view key;
  Group group;
  // Null: this version doesn't carry the action out.
  Outcome (*function)(const Task& task);
};
// All keys, in the order of comparison; each key once.
std::span<const ActionRow> actionTable();
// The row of a key, or null. One hash probe.
const ActionRow* findAction(std::wstring_view key);

// Runs one task. The subject takes Creo's current model when it has none.
Outcome dispatchAction(const core::XmlNode& task, Subject& subject);
// Runs the tasks of the first child named "subtasks", each with a copy of the subject.
void runSubtasks(const core::XmlNode& task, const Subject& subject);

}  // namespace engine
