#include "creo/ProFeatureCreate.h"

#include "headless/creo/solid_operation.h"
#include "headless/model/features.h"
#include "headless/model/new_features.h"
#include "headless/model/parents.h"
#include "headless/model/remove_feature.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

Got<ProFeature> made(const State& state, const Model& solid, const Got<int>& id) {
  if (!id) return id.error;
  headless::putOnDefaultLayers(solid, id.value, state.defaultLayers);
  return ProFeature{solid.handle, id.value};
}

}  // namespace

Got<ProFeature> ProFeatureCreate(ProMdl solid, const ProElement& tree) {
  return onSolid("ProFeatureCreate", solid, [&](State& state, Model& m) -> Got<ProFeature> {
    if (tree.id != kFeatureTree) return ProBadInputs;
    return made(state, m, headless::createDatum(m, tree));
  });
}

Got<ProFeature> ProPatternCreate(const ProFeature& leader, ProPatternType type, const ProElement& tree) {
  return onSolid("ProPatternCreate", leader.owner, [&](State& state, Model& m) -> Got<ProFeature> {
    if (tree.id != kPatternTree || type != ProPatternType::table) return ProBadInputs;
    return made(state, m, headless::createPattern(m, leader.id, tree));
  });
}

ProError ProFeatureDelete(ProMdl solid, const std::vector<int>& features, ProChildren children) {
  return onSolid("ProFeatureDelete", solid, [&](State&, Model& m) -> ProError {
    for (const int id : features)
      if (!headless::featureOf(m, id)) return ProNotFound;
    const bool goAlong = children == ProChildren::goAlong;
    const auto all = goAlong ? headless::withChildren(m, features) : features;
    headless::removeFeatures(m, {all.begin(), all.end()});
    return ProNoError;
  });
}

ProError ProFeatureDimensionVisit(const ProFeature& feature, Visitor<ProDimension> visitor) {
  return onSolid("ProFeatureDimensionVisit", feature.owner, [&](State&, Model& m) -> ProError {
    const auto found = headless::featureOf(m, feature.id);
    if (!found) return ProNotFound;
    std::vector<ProDimension> dimensions;
    if (const headless::FeatureRecord* record = found->record())
      for (const int id : record->dimensions)
        if (m.document->dimension(id, false)) dimensions.push_back({m.handle, id, false});
    return headless::visit<ProDimension>(dimensions, visitor);
  });
}

}  // namespace creo
