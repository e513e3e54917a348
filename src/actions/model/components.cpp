// Actions on the components of an assembly: where they stand, and their own parameters.

#include "actions/task.h"
#include "actions/visits.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProAsmcomp.h"
#include "creo/ProDimension.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "creo/ProParameter.h"
#include "language/read_number.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace language;

// work: (component, name). False, with an error line: the components can't be gone through.
template <class Work>
bool eachComponent(creo::ProMdl assembly, Work work) {
  const creo::ProError visited = creo::ProSolidFeatVisit(assembly, [&](const creo::ProFeature& feature) {
    const auto type = creo::ProFeatureTypeGet(feature);
    if (!type) core::logWrite(text::format(L"The type of the feature %d can't be read", feature.id), core::kError);
    if (type && type.value == creo::kComponentFeature)
      work(feature, nameOrNone(creo::ProFeatureNameGet(feature), L"The name of a component"));
    return creo::ProNoError;
  });
  return isWhole(visited, L"The components");
}

// ---- positions

// A number over 0; nothing, and the line of that message, where the attribute gives none.
std::optional<double> operand(const Task& task, std::wstring_view attribute, Message message) {
  const auto written = task.text(attribute);
  if (const auto number = written.hasText() ? numberIn(written.text) : std::nullopt; number && *number > 0)
    return number;
  core::logMsgPlain(message, core::kError);
  return std::nullopt;
}

Outcome rescalePositions(const Task& task) {
  const auto left = operand(task, L"left", Message::leftOperandUnread);
  if (!left) return done;
  const auto right = operand(task, L"right", Message::rightOperandUnread);
  if (!right) return done;
  const double factor = *left / *right;
  int moved = 0;
  const bool visited = eachComponent(task.model(), [&](const creo::ProFeature& component, const std::wstring& name) {
    if (!creo::ProAsmcompIsPackaged(component).value) {
      core::logWrite(name + L": " + core::msgText(Message::needsReferences), core::kError);
      return;
    }
    const auto now = creo::ProAsmcompPositionGet(component);
    const creo::ProVector& at = now.value.origin;
    if (now && creo::ProAsmcompOriginSet(component, {at.x * factor, at.y * factor, at.z * factor}) == creo::ProNoError)
      ++moved;
    else
      core::logWrite(text::format(L"%s: the new position can't be set", name), core::kError);
  });
  if (visited) core::logIndented(text::format(L"%d components have a new position", moved), core::kNormal, 1);
  return done;
}

// ---- parameters of components

// Empty for a parameter without units.
creo::Got<std::wstring> unitsOf(const creo::ProParameter& parameter) {
  auto units = creo::ProParameterUnitsGet(parameter);
  return units.error == creo::ProNotFound ? creo::Got<std::wstring>(std::wstring()) : units;
}

// Gives a component's parameter a value in these units, making it where there is none.
creo::ProError give(const creo::ProModelitem& component, const std::wstring& name, const creo::ProParamvalue& value,
                    const std::wstring& units) {
  const auto parameter = creo::ProParameterInit(component, name);
  if (!parameter) return creo::ProParameterWithUnitsCreate(component, name, value, units).error;
  const auto stored = unitsOf(parameter.value);
  return stored && stored.value == units ? creo::ProParameterScaledvalueSet(parameter.value, value)
                                         : creo::ProBadInputs;
}

// The pairs "name_%d", "newname_%d"; without a new name the parameter has the same one.
struct Pair {
  std::wstring of, to;
};
std::vector<Pair> parameterPairs(const Task& task) {
  std::vector<Pair> pairs;
  for (const int number : task.numbers(L"name_", kListSize)) {
    const auto of = task.text(text::format(L"name_%d", number), text::kNameSize);
    const std::wstring attribute = text::format(L"newname_%d", number);
    const auto to = task.attribute(attribute).empty() ? of : task.text(attribute, text::kNameSize);
    if (of.hasText() && to.hasText())
      pairs.push_back({of.text, to.text});
    else
      core::logWrite(text::format(L"The names of row %d can't be used", number), core::kError);
  }
  return pairs;
}

// Is it filled?
bool fill(const creo::ProFeature& component, creo::ProMdl model, const std::wstring& name, const Pair& pair) {
  const auto owner = creo::ProMdlToModelitem(model);
  const auto source = owner ? creo::ProParameterInit(owner.value, pair.of) : creo::Got<creo::ProParameter>(owner.error);
  if (owner && source.error == creo::ProNotFound) {
    core::logWrite(text::format(L"%s has no parameter %s", name, pair.of), core::kWarning);
    return false;
  }
  // Assembly and component may have different systems of units: the number goes with its own unit.
  const auto value = source ? creo::ProParameterScaledvalueGet(source.value) : source.error;
  const auto units = source ? unitsOf(source.value) : source.error;
  const creo::ProModelitem item{creo::ProItemType::feature, component.id, component.owner, {}};
  if (value && units && give(item, pair.to, value.value, units.value) == creo::ProNoError) return true;
  core::logWrite(text::format(L"%s of the component %s can't take the value", pair.to, name), core::kError);
  return false;
}

Outcome fillComponentParameters(const Task& task) {
  const std::vector<Pair> pairs = parameterPairs(task);
  int count = 0;
  const bool visited = eachComponent(task.model(), [&](const creo::ProFeature& component, const std::wstring& name) {
    const auto model = creo::ProAsmcompMdlGet(component);
    if (!model) return core::logWrite(text::format(L"The model of %s can't be found", name), core::kError);
    for (const Pair& pair : pairs)
      if (fill(component, model.value, name, pair)) ++count;
  });
  if (visited) core::logIndented(text::format(L"%d parameters are filled", count), core::kNormal, 1);
  return done;
}

// ---- flexible components

// The varied dimension of that symbol.
std::optional<creo::ProModelitem> variedDimension(const creo::ProFeature& component, const std::wstring& symbol) {
  std::optional<creo::ProModelitem> found;
  const creo::ProError visited = creo::ProVariantfeatItemsVisit(component, [&](const creo::ProModelitem& item) {
    if (item.type != creo::ProItemType::dimension) return creo::ProNoError;
    const std::wstring own =
        valueOrNone(creo::ProDimensionSymbolGet({item.owner, item.id}), L"The symbol of a dimension");
    if (!text::equalNoCase(own, symbol)) return creo::ProNoError;
    found = item;
    return creo::ProStopVisit;
  });
  isWhole(visited, L"What a flexible component varies");
  return found;
}

// Makes the parameter with the dimension's value where the component has none, and lets it drive.
creo::ProError drive(const creo::ProFeature& component, const creo::ProModelitem& dimension, const std::wstring& name) {
  const creo::ProModelitem owner{creo::ProItemType::feature, component.id, component.owner, {}};
  const auto parameter = creo::ProParameterInit(owner, name);
  if (parameter && creo::ProParameterValueGet(parameter.value).value.type != creo::ProParamvalueType::real)
    return creo::ProBadInputs;
  if (!parameter) {
    const auto value = creo::ProDimensionValueGet({dimension.owner, dimension.id});
    if (!value) return value.error;
    creo::ProParamvalue start;
    start.type = creo::ProParamvalueType::real;
    start.real = value.value;
    const auto made = creo::ProParameterCreate(owner, name, start);
    if (!made) return made.error;
  }
  return creo::ProVariantfeatDriverSet(component, dimension, name);
}

Outcome addDrivingParameter(const Task& task) {
  const auto name = task.text(L"name", text::kNameSize);
  const auto dim = task.text(L"dim", text::kNameSize);
  if (!name.hasText() || !dim.hasText()) {
    core::logWrite(L"The names of parameter and dimension can't be used", core::kError);
    return done;
  }
  int flexible = 0;
  const bool visited = eachComponent(task.model(), [&](const creo::ProFeature& component, const std::wstring& model) {
    if (!valueOrNone(creo::ProAsmcompIsFlexible(component), L"Whether " + model + L" is flexible")) return;
    const auto dimension = variedDimension(component, dim.text);
    if (!dimension) return;
    ++flexible;
    if (drive(component, *dimension, name.text) == creo::ProNoError)
      core::logIndented(text::format(L"%s drives %s of %s", name.text, dim.text, model), core::kNormal, 1);
    else
      core::logWrite(text::format(L"%s can't drive %s of %s", name.text, dim.text, model), core::kError);
  });
  if (visited && flexible == 0)
    core::logWrite(text::format(L"No flexible component varies the dimension %s", dim.text), core::kWarning);
  return done;
}

constexpr Conditions kOnNativeAssemblies = {kFilter, kAssemblies, kNotInstance, kAnyOfTheWork};

constexpr Attribute kRescaleAttributes[] = {
    {.name = L"left",
     .kind = Kind::number,
     .variables = true,
     .need = Need::needed,
     .about = "a number over 0, by which positions are multiplied"},
    {.name = L"right",
     .kind = Kind::number,
     .variables = true,
     .need = Need::needed,
     .about = "a number over 0, by which they are divided"},
};
constexpr Attribute kFillAttributes[] = {
    {.name = L"name_%d", .variables = true, .need = Need::oneOf, .about = "a parameter of the component's model"},
    {.name = L"newname_%d",
     .variables = true,
     .about = "the component's own parameter; absent or empty: of the same name"},
};
constexpr Attribute kDrivingAttributes[] = {
    {.name = L"name", .variables = true, .need = Need::needed, .about = "the parameter's name"},
    {.name = L"dim",
     .variables = true,
     .need = Need::needed,
     .about = "the symbol of the dimension in the component's model"},
};
constexpr Effects kEffects{.reads = Touched::model | Touched::users, .changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"rescaleASMPosition",
     .place = 54,
     .title = Message::rescalePosition,
     .conditions = kOnNativeAssemblies,
     .attributes = kRescaleAttributes,
     .effects = {.changes = Touched::model},
     .about = "multiplies the positions of components that stand where they were put",
     .function = &rescalePositions},
    {.key = L"fillComponentParametersByReference",
     .place = 88,
     .title = L"Fill component parameters by reference",
     .conditions = kOnNativeAssemblies,
     .attributes = kFillAttributes,
     .effects = kEffects,
     .about = "copies parameters of the components' models to the components' own ones",
     .function = &fillComponentParameters},
    {.key = L"addassociativeparametertoflexibledimension",
     .place = 92,
     .title = L"Add associative parameter to flexible dimension",
     .conditions = kOnNativeAssemblies,
     .attributes = kDrivingAttributes,
     .effects = kEffects,
     .about = "gives flexible components a parameter that drives a varied dimension",
     .function = &addDrivingParameter},
};

}  // namespace

std::span<const Action> componentActions() { return kActions; }

}  // namespace actions
