#include "actions/dispatch.h"

#include <algorithm>
#include <unordered_map>

#include "actions/carry_out.h"
#include "actions/task.h"
#include "actions/under_work.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "documents/filter.h"
#include "text/format.h"
#include "text/units.h"

namespace actions {
namespace {

constexpr int kBreakOnActions = 8;     // the value of `breakpoint` that stops a run on each action
constexpr std::size_t kGroupSize = 7;  // of "- G%d ", its closing zero included

std::wstring_view attributeOf(const XmlNode& node, std::wstring_view name) {
  const core::XmlAttr* found = core::attrFind(node.attributes, name);
  return found ? found->value : std::wstring_view();
}

struct ActionTable {
  std::vector<Action> rows;
  std::unordered_map<std::wstring_view, const Action*> byKey;
};
ActionTable& table() {
  static ActionTable table;
  return table;
}

bool isDeactivated(const XmlNode& node) {
  const core::XmlAttr* deak = core::attrFind(node.attributes, L"deak");
  return deak && deak->value != L"false";
}

// Head and Foot have no model of their own; their actions work on Creo's current one if there is one.
void takeCurrentModel(Subject& subject) {
  if (subject.model) return;
  const auto current = creo::ProMdlCurrentGet();
  if (!current) return;
  subject.model = current.value;
  if (const auto name = creo::ProMdlNameGet(current.value)) subject.name = name.value;
  const auto type = creo::ProMdlTypeGet(current.value);
  if (!type) return;
  using enum creo::ProMdlType;
  if (type.value == part || type.value == drawing || type.value == assembly)
    subject.extension = creo::typeExtension(type.value);
}

Outcome runRow(const Action& action, const XmlNode& node, const Subject& subject) {
  if (action.group == Group::modelNeeded && !subject.model) {
    core::pluginState().currentAction = action.key;  // it has no title, and the line isn't about the action before
    core::logWrite(L"This function need a model to get worked on it", core::kError);
    return notHandled;
  }
  return carryOut(action, Task(node, subject));
}

}  // namespace

void setActionTable(std::vector<Action> rows) {
  std::sort(rows.begin(), rows.end(), [](const Action& a, const Action& b) { return a.place < b.place; });
  table() = {std::move(rows), {}};
  for (const Action& row : table().rows) table().byKey.emplace(row.key, &row);
}

std::span<const Action> actionTable() { return table().rows; }

const Action* findAction(std::wstring_view key) {
  const auto found = table().byKey.find(key);
  return found == table().byKey.end() ? nullptr : found->second;
}

Outcome dispatchAction(const core::XmlNode& task, Subject& subject) {
  const std::wstring_view type = text::cut(attributeOf(task, L"type"), text::kTypeSize - 1);
  if (core::pluginState().breakpoint == kBreakOnActions || isDeactivated(task)) return notHandled;
  takeCurrentModel(subject);
  const UnderWork work(subject.model);

  const Action* action = findAction(type);
  const Outcome result = action ? runRow(*action, task, subject) : notHandled;
  if (result != notHandled || (action && action->group == Group::ownModelTest)) return result;

  // A filter's predicate may stand in a list: it runs for its side effects and its answer is dropped. A type that is no
  // action's either is named by the look-up; an action that lacks its model is known, and has its line. What is said of
  // either isn't about the action before.
  if (!action) core::pluginState().currentAction = type;
  if (documents::runPredicate(task, type, subject.model, action != nullptr) != documents::Answer::noKey) return done;
  core::logWrite(L"CAN'T FIND THIS FUNCTION, FAILURE IN DLL", core::kError);
  return notHandled;
}

void runSubtasks(const core::XmlNode& task, const Subject& subject) {
  const XmlNode* subtasks = nullptr;
  core::xmlEachChild(task, [&](const XmlNode& child) {
    if (!subtasks && child.name == L"subtasks") subtasks = &child;
  });
  if (!subtasks) return;
  int index = -1;
  core::xmlEachChild(*subtasks, [&](const XmlNode& child) {
    ++index;
    if (child.name != L"task") return;
    const core::LogGroup group(std::wstring(text::cut(text::format(L"- G%d ", index), kGroupSize - 1)));
    Subject copy = subject;
    dispatchAction(child, copy);
  });
}

}  // namespace actions
