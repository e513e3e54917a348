#include "creo/ProElement.h"

#include "headless/creo/solid_operation.h"
#include "headless/model/features.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::ModelFeature;
using State = headless::Session::State;

namespace {

// Runs a getter's body on a feature; ProNotFound for one that has gone. get: (feature).
template <class Get>
auto onFeature(std::string_view name, const ProFeature& feature, Get get)
    -> std::invoke_result_t<Get, State&, const ModelFeature&> {
  using Result = std::invoke_result_t<Get, State&, const ModelFeature&>;
  return headless::onSolid(name, feature.owner, [&](State& state, Model& m) -> Result {
    const auto found = headless::featureOf(m, feature.id);
    if (!found) return Result(ProNotFound);
    return get(state, *found);
  });
}

// A member of the feature's record, as a text; empty for a component without a record.
std::wstring recordText(const ModelFeature& feature, std::string headless::FeatureRecord::*member) {
  const headless::FeatureRecord* record = feature.record();
  return record ? text::fromUtf8(record->*member) : std::wstring();
}

decltype(ProElement::value) elementValue(const headless::Scalar& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return text::fromUtf8(*text);
  if (const auto* real = std::get_if<double>(&value)) return *real;
  if (const auto* integer = std::get_if<int>(&value)) return *integer;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  return {};
}

Got<ProMdl> modelOf(const State& state, const ModelFeature& component) {
  if (!component.isComponent()) return ProBadInputs;
  return state.models.inMemory(headless::featureName(component), component.component()->type);
}

// What a component varies in its model, the parameters or all else.
ProError visitVaried(const State& state, const ModelFeature& component, bool parameters,
                     Visitor<ProModelitem> visitor) {
  const auto model = modelOf(state, component);
  if (!model) return model.error;
  std::vector<ProModelitem> items;
  if (const headless::FeatureRecord* record = component.record())
    for (const headless::VariantItemRecord& item : record->variantItems)
      if ((item.type == kParameterItem) == parameters)
        items.push_back({item.type, item.id, model.value, text::fromUtf8(item.name)});
  return headless::visit<ProModelitem>(items, visitor);
}

}  // namespace

ProError ProSolidFeatVisit(ProMdl solid, Visitor<ProFeature> visitor) {
  return headless::onSolid("ProSolidFeatVisit", solid, [&](State&, Model& m) -> ProError {
    std::vector<ProFeature> features;
    for (const ModelFeature& feature : headless::featuresOf(m)) features.push_back({m.handle, feature.place.id});
    return headless::visit<ProFeature>(features, visitor);
  });
}

Got<std::wstring> ProFeatureNameGet(const ProFeature& feature) {
  return onFeature("ProFeatureNameGet", feature, [](State&, const ModelFeature& f) -> Got<std::wstring> {
    std::wstring name = headless::featureName(f);
    if (name.empty()) return ProNotFound;
    return name;
  });
}

Got<int> ProFeatureTypeGet(const ProFeature& feature) {
  return onFeature("ProFeatureTypeGet", feature,
                   [](State&, const ModelFeature& f) -> Got<int> { return headless::featureType(f); });
}

Got<std::wstring> ProFeatureTypenameGet(const ProFeature& feature) {
  return onFeature("ProFeatureTypenameGet", feature, [](State&, const ModelFeature& f) -> Got<std::wstring> {
    std::wstring name = recordText(f, &headless::FeatureRecord::typeName);
    if (name.empty() && f.isComponent()) name = L"COMPONENT";
    return name;
  });
}

Got<std::wstring> ProFeatureSubtypeGet(const ProFeature& feature) {
  return onFeature("ProFeatureSubtypeGet", feature, [](State&, const ModelFeature& f) -> Got<std::wstring> {
    return recordText(f, &headless::FeatureRecord::subtype);
  });
}

Got<int> ProFeatureNumberGet(const ProFeature& feature) {
  return onFeature("ProFeatureNumberGet", feature, [](State&, const ModelFeature& f) -> Got<int> {
    if (headless::isSuppressed(headless::featureStatus(f))) return ProNotFound;
    return f.place.number;
  });
}

Got<ProFeatureStatus> ProFeatureStatusGet(const ProFeature& feature) {
  return onFeature("ProFeatureStatusGet", feature,
                   [](State&, const ModelFeature& f) -> Got<ProFeatureStatus> { return headless::featureStatus(f); });
}

Got<bool> ProFeatureVisibilityGet(const ProFeature& feature) {
  return onFeature("ProFeatureVisibilityGet", feature, [](State&, const ModelFeature& f) -> Got<bool> {
    const headless::FeatureRecord* record = f.record();
    return !record || !record->hidden;
  });
}

Got<bool> ProFeatureGrppatternStatusGet(const ProFeature& pattern) {
  return onFeature("ProFeatureGrppatternStatusGet", pattern, [](State&, const ModelFeature& f) -> Got<bool> {
    const headless::FeatureRecord* record = f.record();
    return record && record->pattern && record->pattern->group;
  });
}

Got<ProElemtree> ProPatternElemtreeCreate(const ProFeature& pattern) {
  return onFeature("ProPatternElemtreeCreate", pattern, [](State&, const ModelFeature& f) -> Got<ProElemtree> {
    const headless::FeatureRecord* record = f.record();
    if (headless::featureType(f) != kPatternFeature) return ProBadInputs;
    ProElemtree tree;
    if (record->pattern && record->pattern->regeneration.index() != 0)
      tree.elements.push_back({kPatternRegeneration, elementValue(record->pattern->regeneration), {}});
    return tree;
  });
}

Got<bool> ProFeatureHasGeomchks(const ProFeature& feature) {
  return onFeature("ProFeatureHasGeomchks", feature, [](State&, const ModelFeature& f) -> Got<bool> {
    const headless::FeatureRecord* record = f.record();
    return record && record->geometryChecks;
  });
}

Got<int> ProFeatureNumSectionsGet(const ProFeature& feature) {
  return onFeature("ProFeatureNumSectionsGet", feature, [](State&, const ModelFeature& f) -> Got<int> {
    const headless::FeatureRecord* record = f.record();
    return record ? static_cast<int>(record->sections.size()) : 0;
  });
}

Got<std::vector<ProSectionEntity>> ProFeatureSectionEntitiesGet(const ProFeature& feature, int section) {
  using Entities = std::vector<ProSectionEntity>;
  return onFeature("ProFeatureSectionEntitiesGet", feature, [&](State&, const ModelFeature& f) -> Got<Entities> {
    const headless::FeatureRecord* record = f.record();
    if (!record || section < 0 || static_cast<std::size_t>(section) >= record->sections.size()) return ProNotFound;
    Entities entities;
    for (const headless::EntityRecord& entity : record->sections[static_cast<std::size_t>(section)].entities)
      entities.push_back({entity.id, entity.type});
    return entities;
  });
}

Got<ProMdl> ProAsmcompMdlGet(const ProFeature& component) {
  return onFeature("ProAsmcompMdlGet", component,
                   [](State& state, const ModelFeature& f) -> Got<ProMdl> { return modelOf(state, f); });
}

Got<bool> ProAsmcompIsFlexible(const ProFeature& component) {
  return onFeature("ProAsmcompIsFlexible", component, [](State&, const ModelFeature& f) -> Got<bool> {
    if (!f.isComponent()) return ProBadInputs;
    return f.component()->flexible;
  });
}

ProError ProVariantfeatItemsVisit(const ProFeature& component, Visitor<ProModelitem> visitor) {
  return onFeature("ProVariantfeatItemsVisit", component, [&](State& state, const ModelFeature& f) -> ProError {
    return visitVaried(state, f, false, visitor);
  });
}

ProError ProVariantfeatParamsVisit(const ProFeature& component, Visitor<ProModelitem> visitor) {
  return onFeature("ProVariantfeatParamsVisit", component, [&](State& state, const ModelFeature& f) -> ProError {
    return visitVaried(state, f, true, visitor);
  });
}

}  // namespace creo
