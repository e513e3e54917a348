// Values of the model report that go through the features.
#include <optional>

#include "actions/model/parameter_values.h"
#include "creo/ProElement.h"
#include "creo/ProFeature.h"
#include "creo/ProModelitem.h"
#include "creo/ProParameter.h"
#include "reports/model_facts.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports {
namespace {

// "DIMENSION d5", "PARAMETER LENGTH 12.500000", "3 HOLE".
std::wstring variantItem(const creo::ProModelitem& item) {
  const bool isParameter = item.type == creo::kParameterItem;
  std::wstring text = text::format(L"%d", static_cast<int>(item.type));
  if (item.type == creo::ProItemType::dimension) text = L"DIMENSION";
  if (isParameter) text = L"PARAMETER";
  if (const auto name = creo::ProModelitemNameGet(item)) text += L" " + name.value;
  if (!isParameter) return text;
  const auto owner = creo::ProMdlToModelitem(item.owner);
  if (!owner) return text;
  const auto parameter = creo::ProParameterInit(owner.value, item.name);
  if (!parameter) return text;
  const auto value = creo::ProParameterValueGet(parameter.value);
  return value ? text + L" " + actions::textOf(value.value) : text;
}

std::wstring flexibleComponent(const creo::ProFeature& component) {
  std::wstring items;
  const auto add = [&items](const creo::ProModelitem& item) {
    items += (items.empty() ? L"" : L", ") + variantItem(item);
    return creo::ProNoError;
  };
  creo::ProVariantfeatItemsVisit(component, add);
  creo::ProVariantfeatParamsVisit(component, add);
  return text::format(L"%d - %s - %s", component.id, creo::ProFeatureNameGet(component).value, items);
}

// How a pattern's members regenerate; nothing where it doesn't say.
std::optional<creo::Got<int>> regenerationType(const creo::ProFeature& pattern) {
  const auto tree = creo::ProPatternElemtreeCreate(pattern);
  if (!tree) return std::nullopt;
  const auto element = creo::ProElemtreeElementGet(tree.value, creo::kPatternRegeneration);
  if (!element) return std::nullopt;
  return creo::ProElementIntegerGet(element.value);
}

// What stands before the name of a pattern whose element can't be read.
std::wstring_view unreadWord(creo::ProError error) {
  if (error == creo::ProBadInputs) return L"Bad Inputs";
  return error == creo::ProInvalidType ? L"Invalid type" : L"Fehler beim lesen";
}

std::wstring_view regenerationWord(const std::optional<creo::Got<int>>& type) {
  if (!type || !*type) return L" - Failure";
  switch (type->value) {
    case creo::kGeneralPattern:
      return L" - General";
    case creo::kVaryingPattern:
      return L" - Varying";
    case creo::kIdenticalPattern:
      return L" - Identical";
    case -1:
      return L" - Failure";
    default:
      return L" - else";
  }
}

std::wstring patternLine(const creo::ProFeature& pattern) {
  std::wstring line;
  const auto ofGroup = creo::ProFeatureGrppatternStatusGet(pattern);
  const auto type = regenerationType(pattern);
  if (type && !*type) line += unreadWord(type->error);
  const auto name = creo::ProModelitemNameGet({creo::ProItemType::feature, pattern.id, pattern.owner, {}});
  line += name ? name.value : text::format(L"%d", pattern.id);
  line += ofGroup && ofGroup.value ? L" - Group" : L" - Feature";
  line += regenerationWord(type);
  return line;
}

bool isOfType(const creo::ProFeature& feature, int type) {
  const auto present = creo::ProFeatureTypeGet(feature);
  return present && present.value == type;
}

}  // namespace

std::wstring featureNamesAndTypes(const ModelFacts& facts) {
  int left = text::parseInt(facts.task.attribute(L"xFeats"));
  std::wstring lines;
  if (left <= 0) return lines;
  creo::ProSolidFeatVisit(facts.model, [&](const creo::ProFeature& feature) {
    appendLine(lines, creo::ProFeatureNameGet(feature).value + L" - " + creo::ProFeatureTypenameGet(feature).value);
    return --left > 0 ? creo::ProNoError : creo::ProStopVisit;
  });
  return lines;
}

std::wstring featureCount(const ModelFacts& facts) {
  int count = 0;
  const auto visited = creo::ProSolidFeatVisit(facts.model, [&count](const creo::ProFeature& feature) {
    const auto visible = creo::ProFeatureVisibilityGet(feature);
    if (!visible) return creo::ProGeneralError;  // a number without it would be a wrong one
    if (visible.value) ++count;
    return creo::ProNoError;
  });
  return countOf(visited, count);
}

std::wstring flexibleComponents(const ModelFacts& facts) {
  std::wstring lines;
  creo::ProSolidFeatVisit(facts.model, [&lines](const creo::ProFeature& feature) {
    if (!isOfType(feature, creo::kComponentFeature)) return creo::ProNoError;
    const auto flexible = creo::ProAsmcompIsFlexible(feature);
    if (flexible && flexible.value) appendLine(lines, flexibleComponent(feature));
    return creo::ProNoError;
  });
  return lines;
}

std::wstring patterns(const ModelFacts& facts) {
  std::wstring lines;
  creo::ProSolidFeatVisit(facts.model, [&lines](const creo::ProFeature& feature) {
    if (isOfType(feature, creo::kPatternFeature)) appendLine(lines, patternLine(feature));
    return creo::ProNoError;
  });
  return lines;
}

}  // namespace reports
