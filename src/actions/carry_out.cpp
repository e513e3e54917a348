#include "actions/carry_out.h"

#include <algorithm>

#include "creo/ProMdl.h"
#include "documents/filter.h"
#include "documents/predicates.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using creo::ProMdlType;

// A failure is told where there is a model, which then isn't worked.
bool hasType(const Task& task, std::initializer_list<ProMdlType> types) {
  const auto type = creo::ProMdlTypeGet(task.model());
  if (!type && task.model()) core::logWrite(L"The type of the model can't be read", core::kError);
  return type && std::find(types.begin(), types.end(), type.value) != types.end();
}

bool passesFilter(const Task& task) {
  return documents::filterCheck(task.node(), task.subject().extension, task.model()) == documents::kFilterHolds;
}
bool isInstance(const Task& task) { return documents::isInstance(task.model()) == documents::Answer::yes; }
bool isSkeleton(const Task& task) { return documents::isSkeleton(task.model()) == documents::Answer::yes; }

// "name_%d" stands for the whole list of them, which may have gaps.
bool isThere(const Task& task, const Attribute& attribute) {
  if (!attribute.name.ends_with(core::kNumberSign)) return task.has(attribute.name);
  return !task.numbers(attribute.name.substr(0, attribute.name.size() - core::kNumberSign.size()), attribute.most)
              .empty();
}
// Attributes of which one must be there are the work; where a row has none, those that are needed together: the
// function itself tells which of these is missing.
Need needOfWork(const Action& action) {
  const bool hasChoice = std::any_of(action.attributes.begin(), action.attributes.end(),
                                     [](const Attribute& attribute) { return attribute.need == Need::oneOf; });
  return hasChoice ? Need::oneOf : Need::needed;
}
bool hasWork(const Action& action, const Task& task) {
  const Need work = needOfWork(action);
  return std::any_of(action.attributes.begin(), action.attributes.end(),
                     [&](const Attribute& attribute) { return attribute.need == work && isThere(task, attribute); });
}

// "The attribute 'name_0' is missing": the first of those any of which is work.
std::wstring missingLine(const Action& action) {
  const Need work = needOfWork(action);
  const auto first = std::find_if(action.attributes.begin(), action.attributes.end(),
                                  [work](const Attribute& attribute) { return attribute.need == work; });
  const std::wstring name = first == action.attributes.end() ? std::wstring() : text::format(first->name, 0);
  return text::format(L"The attribute '%s' is missing", name);
}

std::wstring titleOf(const Action& action, const Task& task) {
  const std::wstring_view title = lineText(action.title);
  return action.inTitle.empty() ? std::wstring(title) : text::format(title, task.attribute(action.inTitle));
}

void tellRefusal(const Action& action, const Condition& condition) {
  if (condition.test == Test::anyOfTheWork) return core::logWrite(missingLine(action), condition.level);
  if (condition.line.isThere()) core::logWrite(lineText(condition.line), condition.level);
}

}  // namespace

bool isForAll(const Task& task) {
  const auto isOff = [&](std::wstring_view name) { return task.attribute(name) == L"false"; };
  return !isOff(L"forPRT") && !isOff(L"forASM") && !isOff(L"forDRW") && !task.isTrue(L"forEF");
}

bool holds(const Action& action, const Condition& condition, const Task& task) {
  using enum Test;
  switch (condition.test) {
    case filter:
      return passesFilter(task);
    case filterUnlessForAll:
      return isForAll(task) || passesFilter(task);
    case filterWithModel:
      return !task.model() || passesFilter(task);
    case noFilter:
      return true;
    case model:
      return static_cast<bool>(task.model());
    case part:
      return task.extensionIs(L"PRT");
    case assembly:
      return task.extensionIs(L"ASM");
    case drawing:
      return task.extensionIs(L"DRW");
    case partOrAssembly:
      return task.extensionIs(L"PRT") || task.extensionIs(L"ASM");
    case solidType:
      return hasType(task, {ProMdlType::part, ProMdlType::assembly, ProMdlType::manufacturing});
    case partType:
      return hasType(task, {ProMdlType::part});
    case assemblyType:
      return hasType(task, {ProMdlType::assembly, ProMdlType::manufacturing});
    case drawingType:
      return hasType(task, {ProMdlType::drawing});
    case anyType:
      return hasType(task, {ProMdlType::part, ProMdlType::assembly, ProMdlType::manufacturing, ProMdlType::drawing});
    case solidOrDrawingUser:
      return hasType(task, {ProMdlType::assembly, ProMdlType::manufacturing, ProMdlType::drawing});
    case typeKnown:
      return static_cast<bool>(creo::ProMdlTypeGet(task.model()));
    case notInstance:
      return !isInstance(task);
    case notSkeleton:
      return !isSkeleton(task);
    case instancesAsTold:
      return task.attribute(L"forInstances") != L"false" || !isInstance(task);
    case skeletonsAsTold:
      return task.isTrue(L"forSkel") || !isSkeleton(task);
    case anyOfTheWork:
      return hasWork(action, task);
  }
  return false;
}

Outcome carryOut(const Action& action, const Task& task) {
  if (action.title.isThere()) core::logIndented(titleOf(action, task), core::kNormal, 0);
  if (!action.version.empty() && task.attribute(L"version") != action.version) return wrongVersion;
  for (const Condition& condition : action.conditions) {
    if (!holds(action, condition, task)) {
      tellRefusal(action, condition);
      return condition.outcome;
    }
    if (isFilterTest(condition.test)) core::countAction();
  }
  return action.function(task);
}

}  // namespace actions
