#include "creo/ProFeature.h"

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

}  // namespace

ProError ProSolidFeatVisit(ProMdl solid, Visitor<ProFeature> visitor) {
  return headless::onSolid("ProSolidFeatVisit", solid, [&](State&, Model& m) -> ProError {
    std::vector<ProFeature> features;
    for (const ModelFeature& one : headless::featuresOf(m)) features.push_back({m.handle, one.place.id});
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
  return onFeature("ProFeatureNumberGet", feature,
                   [](State&, const ModelFeature& f) -> Got<int> { return f.place.number; });
}

Got<ProFeatureStatus> ProFeatureStatusGet(const ProFeature& feature) {
  return onFeature("ProFeatureStatusGet", feature,
                   [](State&, const ModelFeature& f) -> Got<ProFeatureStatus> { return headless::featureStatus(f); });
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
    for (const headless::EntityRecord& one : record->sections[static_cast<std::size_t>(section)].entities)
      entities.push_back({one.id, one.type});
    return entities;
  });
}

Got<ProMdl> ProAsmcompMdlGet(const ProFeature& component) {
  return onFeature("ProAsmcompMdlGet", component, [](State& state, const ModelFeature& f) -> Got<ProMdl> {
    if (!f.isComponent()) return ProBadInputs;
    const ProMdlType type = f.component()->type;
    if (const auto there = state.models.inMemory(headless::featureName(f), type)) return there;
    const auto model = state.models.retrieve(headless::componentLabel(f), type);
    return model ? model : ProNotFound;
  });
}

Got<bool> ProAsmcompIsFlexible(const ProFeature& component) {
  return onFeature("ProAsmcompIsFlexible", component, [](State&, const ModelFeature& f) -> Got<bool> {
    if (!f.isComponent()) return ProBadInputs;
    return f.component()->flexible;
  });
}

}  // namespace creo
