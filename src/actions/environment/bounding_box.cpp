// Measures of a model's box as user variables.
#include "actions/environment/bounding_box.h"

#include "actions/environment/number_format.h"
#include "actions/task.h"
#include "core/log.h"
#include "language/user_variables.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;
struct MeasureRow {
  const wchar_t* attribute;
  double BoxResult::*value;
  const wchar_t* line;
};
constexpr MeasureRow kMeasures[] = {
    {L"w", &BoxResult::width, L"Set width"},
    {L"l", &BoxResult::length, L"Set legth"},
    {L"h", &BoxResult::height, L"Set height"},
    {L"d", &BoxResult::diameter, L"Set diameter"},
};

// A measure that failed leaves no variable, as that of the model before would pass for this one's.
Outcome fail(const Task& task, std::wstring_view line) {
  core::logWrite(line, core::kError);
  for (const MeasureRow& row : kMeasures) userVariables().remove(task.attribute(row.attribute));
  return done;
}

// The format is a foreign text; one that could ask for more than the number is refused before anything is measured.
Outcome setUserVariableFromBoundingBox(const Task& task) {
  const auto format = NumberFormat::read(task.attribute(L"format"));
  if (!format)
    return fail(task, text::format(L"The format isn't one of a single floating number: %s", task.attribute(L"format")));
  const auto box = task.isTrue(L"rotate") ? searchedBox(task.model(), task.isTrue(L"sort")) : modelBox(task.model());
  if (!box) return fail(task, L"Error while calculating the bounding box");
  core::logIndented(L"Bounding Box calculated", core::kNormal, 1);
  for (const MeasureRow& row : kMeasures) {
    const std::wstring_view name = task.attribute(row.attribute);
    if (name.empty()) continue;
    userVariables().set(name, format->apply(box.value.*row.value));
    core::logIndented(row.line, core::kNormal, 1);
  }
  return done;
}

constexpr Attribute variableFor(std::wstring_view name, std::string_view about) {
  return {.name = name, .kind = Kind::variable, .need = Need::oneOf, .about = about};
}
constexpr Attribute kAttributes[] = {
    {.name = L"rotate",
     .kind = Kind::flag,
     .words = L"true",
     .about = "the smallest box; else that along the model's own axes"},
    {.name = L"sort",
     .kind = Kind::flag,
     .words = L"true",
     .about = "with rotate: length is the longest side, then width, then height"},
    variableFor(L"w", "the variable of the width"),
    variableFor(L"l", "the variable of the length"),
    variableFor(L"h", "the variable of the height"),
    variableFor(L"d", "the variable of the diameter"),
    {.name = L"format", .kind = Kind::format, .need = Need::needed, .about = "how the numbers are written"},
};
// With "rotate" features of the model are put away and come back.
constexpr Effects kEffects{.reads = Touched::model | Touched::users, .changes = Touched::model | Touched::variables};

constexpr Action kActions[] = {
    {.key = L"setUserVariableFromBoundingBox",
     .place = 85,
     .group = Group::modelNeeded,
     .title = L"Set user variable from bounding box",
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "sets user variables from the sides of the box around the model",
     .function = &setUserVariableFromBoundingBox},
};

}  // namespace

std::span<const Action> boundingBoxActions() { return kActions; }

}  // namespace actions
