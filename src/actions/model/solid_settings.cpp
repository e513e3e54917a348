// Actions that set what holds for a solid as a whole: accuracy, tolerances, bounds of dimensions, units.
#include <algorithm>

#include "actions/task.h"
#include "actions/visits.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProSolidSettings.h"
#include "creo/ProUnitsystem.h"
#include "language/read_number.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace language;

void tell(creo::ProError result) {
  if (result == creo::ProNoError)
    core::logMsgId(Message::valueSet, core::kNormal, 1);
  else
    core::logMsgPlain(Message::valueNotSet, core::kError);
}

// ---- accuracy and tolerances

Outcome setAccuracy(const Task& task) {
  const std::wstring_view kind = task.attribute(L"valtype");
  if (kind != L"rel" && kind != L"abs") {
    unknownWord(L"valtype", kind, L"rel or abs");
    return done;
  }
  const auto written = task.text(L"value");
  const auto value = written.hasText() ? numberIn(written.text) : std::nullopt;
  if (!value || *value <= 0) {
    core::logMsgPlain(Message::accuracyUnread, core::kError);
    return done;
  }
  tell(creo::ProSolidAccuracySet(
      task.model(), {kind == L"rel" ? creo::ProAccuracyKind::relative : creo::ProAccuracyKind::absolute, *value}));
  return done;
}

Outcome setTolerance(const Task& task) {
  const std::wstring_view tol = task.attribute(L"tol");
  if (tol.size() != 1 || tol[0] < L'0' || tol[0] > L'4') {
    unknownWord(L"tol", tol, L"0 to 4");
    return done;
  }
  tell(creo::ProSolidModelclassSet(task.model(), static_cast<creo::ProToleranceClass>(tol[0] - L'1')));
  return done;
}

Outcome loadToleranceTable(const Task& task) {
  const std::wstring path = task.path(L"path", L"models");
  core::logIndented(path, core::kNormal, 1);
  switch (creo::ProSolidToleranceTableLoad(task.model(), path)) {
    case creo::ProNoError:
      core::logIndented(L"Tolerance table is loaded", core::kNormal, 1);
      break;
    case creo::ProNotFound:
      core::logWrite(L"The tolerance table can't be found", core::kError);
      break;
    default:
      core::logWrite(L"The tolerance table can't be read", core::kError);
  }
  return done;
}

Outcome setAllDimensionBounds(const Task& task) {
  static constexpr std::pair<std::wstring_view, creo::ProDimensionBound> kBounds[] = {
      {L"nominal", creo::ProDimensionBound::nominal},
      {L"upper", creo::ProDimensionBound::upper},
      {L"middle", creo::ProDimensionBound::middle},
      {L"lower", creo::ProDimensionBound::lower}};
  const std::wstring_view word = task.attribute(L"bound");
  const auto* bound =
      std::find_if(std::begin(kBounds), std::end(kBounds), [&](auto& entry) { return entry.first == word; });
  if (bound == std::end(kBounds)) {
    unknownWord(L"bound", word, L"nominal, upper, middle or lower");
    return done;
  }
  int count = 0;
  const auto visited = creo::ProSolidDimensionVisit(task.model(), false, [&](const creo::ProDimension& dimension) {
    if (!creo::ProDimensionToleranceGet(dimension)) return creo::ProNoError;
    if (creo::ProDimensionBoundSet(dimension, bound->second) == creo::ProNoError)
      ++count;
    else
      core::logWrite(text::format(L"The bound of %s can't be set", creo::ProDimensionSymbolGet(dimension).value),
                     core::kError);
    return creo::ProNoError;
  });
  isWhole(visited, L"The dimensions");
  core::logIndented(text::format(L"%d dimensions stand at %s", count, word), core::kNormal, 1);
  return done;
}

// ---- units

// "millimeter Newton Second (mmNs)" by its whole name, or by what stands in brackets.
bool isCalled(const std::wstring& system, std::wstring_view name) {
  if (text::equalNoCase(system, name)) return true;
  const auto open = system.rfind(L'(');
  return open != system.npos && system.ends_with(L')') &&
         text::equalNoCase(std::wstring_view(system).substr(open + 1, system.size() - open - 2), name);
}

creo::Got<creo::ProUnitsystem> systemOfThatName(creo::ProMdl solid, std::wstring_view name) {
  const auto systems = creo::ProMdlUnitsystemsCollect(solid);
  for (const creo::ProUnitsystem& system : systems.value)
    if (isCalled(system.name, name)) return system;
  return creo::ProNotFound;
}

// The system of that name, made where the task says of what.
creo::Got<creo::ProUnitsystem> wantedSystem(const Task& task, const std::wstring& name) {
  const bool hasUnits = task.has(L"length") || task.has(L"mass") || task.has(L"time") || task.has(L"temp");
  auto system = systemOfThatName(task.model(), name);
  if (system || !hasUnits) {
    if (hasUnits) core::logMsgId(Message::unitSystemExists, core::kNormal, 1);
    return system;
  }
  system = creo::ProUnitsystemCreate(task.model(), name,
                                     {.length = std::wstring(task.attribute(L"length")),
                                      .mass = std::wstring(task.attribute(L"mass")),
                                      .time = std::wstring(task.attribute(L"time")),
                                      .temperature = std::wstring(task.attribute(L"temp"))});
  if (system) core::logIndented(text::format(core::msgText(Message::unitSystemCreated), name), core::kNormal, 1);
  return system;
}

Outcome setUnits(const Task& task) {
  const auto name = task.text(L"us");
  const auto system =
      name.hasText() ? wantedSystem(task, name.text) : creo::Got<creo::ProUnitsystem>(creo::ProNotFound);
  const auto present = creo::ProMdlPrincipalunitsystemGet(task.model());
  if (system && present && present.value == system.value.name) {
    core::logMsgId(Message::unitSystemAlreadySet, core::kNormal, 1);
    return done;
  }
  const auto conversion =
      task.isTrue(L"convert") ? creo::ProUnitConversion::sameSize : creo::ProUnitConversion::sameNumbers;
  if (!system || creo::ProMdlPrincipalunitsystemSet(task.model(), system.value, conversion) != creo::ProNoError) {
    core::logMsgPlain(Message::unitSystemNotSet, core::kError);
    return done;
  }
  core::logMsgId(Message::unitSystemSet, core::kNormal, 1);
  const auto status = creo::ProSolidRegenerationstatusGet(task.model());
  if (status && status.value == creo::ProRegenerationStatus::failed)
    core::logWrite(L"The model doesn't regenerate in the new unit system", core::kError);
  return done;
}

// ---- rows

constexpr Attribute kAccuracyAttributes[] = {
    {.name = L"valtype",
     .kind = Kind::word,
     .words = L"abs|rel",
     .need = Need::needed,
     .about = "rel: relative to the model's size, at most 0.01; abs: in its units"},
    {.name = L"value", .kind = Kind::number, .variables = true, .need = Need::oneOf, .about = "a number over 0"},
};
constexpr Attribute kToleranceAttributes[] = {
    {.name = L"tol",
     .kind = Kind::word,
     .words = L"0|1|2|3|4",
     .need = Need::oneOf,
     .about = "0: ANSI, without a class; 1 to 4: ISO 2768 fine, medium, coarse, very coarse"},
};
constexpr Attribute kTableAttributes[] = {
    {.name = L"path",
     .kind = Kind::file,
     .variables = true,
     .need = Need::oneOf,
     .folder = L"models",
     .about = "a file with a name and a number on each line"},
};
constexpr Attribute kBoundAttributes[] = {
    {.name = L"bound",
     .kind = Kind::word,
     .words = L"nominal|upper|middle|lower",
     .need = Need::oneOf,
     .about = "where in its tolerance each dimension stands"},
};
// A unit of a new system.
constexpr Attribute unit(std::wstring_view name, std::string_view about) {
  return {.name = name, .kind = Kind::unit, .about = about};
}
constexpr Attribute kUnitsAttributes[] = {
    {.name = L"us",
     .variables = true,
     .need = Need::oneOf,
     .about = "the system's whole name, or what it has in brackets, as mmNs"},
    unit(L"length", "where there is no such system: the new one's unit of length; absent: mm"),
    unit(L"mass", "the same of mass; absent: kg"),
    unit(L"time", "the same of time; absent: sec"),
    unit(L"temp", "the same of temperature; absent: C"),
    {.name = L"convert",
     .kind = Kind::flag,
     .words = L"true",
     .about = "true: the model keeps its size; anything else: it keeps its numbers"},
};
constexpr Effects kEffects{.changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"setAccuracy",
     .place = 39,
     .title = Message::setAccuracy,
     .conditions = kOnNativeSolids,
     .attributes = kAccuracyAttributes,
     .effects = kEffects,
     .about = "sets the accuracy of a solid",
     .function = &setAccuracy},
    {.key = L"setTolerance",
     .place = 40,
     .title = Message::setTolerance,
     .conditions = kOnNativeSolids,
     .attributes = kToleranceAttributes,
     .effects = kEffects,
     .about = "sets the tolerance standard and class of a solid",
     .function = &setTolerance},
    {.key = L"setUnits",
     .place = 48,
     .title = Message::setUnits,
     .conditions = kOnNativeSolids,
     .attributes = kUnitsAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::model | Touched::users},
     .about = "makes a system of units the solid's principal one",
     .function = &setUnits},
    {.key = L"setAllDimensionBounds",
     .place = 80,
     .title = L"Set all dimension bounds",
     .conditions = kOnNativeSolids,
     .attributes = kBoundAttributes,
     .effects = kEffects,
     .about = "sets at which end of its tolerance each dimension stands",
     .function = &setAllDimensionBounds},
    {.key = L"loadToleranceTable",
     .place = 86,
     .title = L"Load tolerance table",
     .conditions = kOnNativeSolids,
     .attributes = kTableAttributes,
     .effects = {.reads = Touched::model | Touched::files, .changes = Touched::model},
     .about = "reads a table of tolerances into a solid",
     .function = &loadToleranceTable},
};

}  // namespace

std::span<const Action> solidSettingActions() { return kActions; }

}  // namespace actions
