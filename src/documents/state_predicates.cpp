// Predicates on what a model keeps under a name: layers and layer states, views, and the states of solids.
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProLayer.h"
#include "creo/ProState.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "text/numbers.h"

namespace documents {
namespace {

constexpr int kTitleLayer = 31;

int anyMatches(std::wstring_view pattern, const std::vector<std::wstring>& names) {
  const bool any =
      std::any_of(names.begin(), names.end(), [pattern](const std::wstring& name) { return matches(pattern, name); });
  return any ? kTrue : kFalse;
}

using StateVisit = creo::ProError (*)(creo::ProMdl solid, creo::Visitor<creo::ProModelitem> visitor);

// Does a visit of the solid meet an item whose name fits the attribute's pattern?
int stateNamed(creo::ProMdl solid, StateVisit visit, const core::XmlNode& item, std::wstring_view attribute) {
  if (!applicableType(solid, AppliesTo::solids)) return kNotApplicable;
  bool held = false;
  visit(solid, [&](const creo::ProModelitem& state) {
    const auto name = creo::ProModelitemNameGet(state);
    held = name && matches(valueOf(item, attribute), name.value);
    return held ? creo::ProStopVisit : creo::ProNoError;
  });
  return held ? kTrue : kFalse;
}

int combinedStateNamed(creo::ProMdl model, std::wstring_view pattern) {
  std::vector<std::wstring> names;
  for (const creo::ProModelitem& state : creo::ProMdlCombstatesGet(model).value)
    if (const auto data = creo::ProCombstateDataGet(state)) names.push_back(data.value.name);
  return anyMatches(pattern, names);
}

// How many items a layer may hold, by the sign: fewer, more, or just so many as the number.
bool countHolds(const core::XmlNode& item, std::size_t count) {
  const std::wstring_view sign = valueOf(item, L"aomisign");
  const auto held = static_cast<long long>(count),
             wanted = static_cast<long long>(text::parseInt(valueOf(item, L"aomitf")));
  const bool holds =
      (sign == L"=" && held == wanted) || (sign == L">" && held > wanted) || (sign == L"<" && held < wanted);
  return noted(sign, valueOf(item, L"aomitf"), static_cast<double>(count), holds);
}

bool layerHolds(const core::XmlNode& item, const creo::ProLayer& layer) {
  const auto name = creo::ProLayerNameGet(layer);
  if (!name || !matches(valueOf(item, L"currmat"), name.value)) return false;
  if (valueOf(item, L"aomi") == L"false") return true;
  const auto items = creo::ProLayerItemsGet(layer);
  if (items) return countHolds(item, items.value.size());
  core::logWrite(L"AAAAAAAAAAAH .... PLIG Error ^^", core::kError);
  return false;
}

}  // namespace

int layerPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleLayer);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  bool held = false;
  creo::ProMdlLayerVisit(model, [&](const creo::ProLayer& layer) {
    held = layerHolds(item, layer);
    return held ? creo::ProStopVisit : creo::ProNoError;
  });
  return held ? kTrue : kFalse;
}

int layerStatePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Layer state exists");
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  std::vector<std::wstring> names;
  for (const creo::ProLayerstate& state : creo::ProLayerstatesGet(model).value)
    if (const auto name = creo::ProLayerstateNameGet(state)) names.push_back(name.value);
  return anyMatches(valueOf(item, L"statename"), names);
}

int viewPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: View exists");
  const auto views = creo::ProViewNamesGet(model);
  if (!views) return kFalse;
  const std::wstring_view pattern = valueOf(item, L"viewname");
  if (anyMatches(pattern, views.value.names) == kTrue) return kTrue;
  return anyMatches(pattern, views.value.alternateNames);
}

int combinedStatePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Combined state");
  const auto type = applicableType(model, AppliesTo::solids);
  if (!type || (*type != creo::ProMdlType::part && *type != creo::ProMdlType::assembly)) return kNotApplicable;
  return combinedStateNamed(model, valueOf(item, L"csname"));
}

int combinedStateExistsPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Combined state exists");
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  return combinedStateNamed(model, valueOf(item, L"statename"));
}

int simplifiedRepPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Simplified representation exists");
  return stateNamed(model, &creo::ProSolidSimprepVisit, item, L"simpRepName");
}

int styleStatePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Style state exists");
  return stateNamed(model, &creo::ProSolidCompdisplayVisit, item, L"stylename");
}

int crossSectionPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Cross section exists");
  return stateNamed(model, &creo::ProSolidXsecVisit, item, L"xsecname");
}

int explodedStatePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Explode state exists");
  return stateNamed(model, &creo::ProSolidExpldstateVisit, item, L"expldname");
}

}  // namespace documents
