#include "headless/model/placed.h"

#include "headless/model/bodies.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "headless/model/measures.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace headless {

using creo::ProTransform;

double unitRatio(std::string_view unit, const Model& from, const Model& to) {
  const ModelRecord& source = from.document->record;
  const ModelRecord& target = to.document->record;
  const double there = inSystem(1, unit, target), here = inSystem(1, unit, source);
  return there == here ? 1 : there / here;
}

std::vector<PlacedModel> placedComponents(const Models& models, const Model& assembly) {
  std::vector<PlacedModel> placed;
  for (const ModelFeature& feature : featuresOf(assembly)) {
    if (!feature.isComponent() || !hasGeometry(assembly, feature.place.id)) continue;
    const auto handle = models.inMemory(featureName(feature), feature.component()->type);
    const Model* model = handle ? models.find(handle.value) : nullptr;
    if (!model || model->document->record.skeleton) continue;
    placed.push_back({model, componentPlacement(assembly, *feature.component())});
  }
  return placed;
}

bool hasGeometry(const Model& solid, int feature) {
  if (feature == 0) return true;
  const auto found = featureOf(solid, feature);
  if (!found) return true;
  const creo::ProFeatureStatus status = featureStatus(*found);
  return status == creo::ProFeatureStatus::active || status == creo::ProFeatureStatus::unregenerated;
}

ProTransform componentPlacement(const Model& assembly, const UsedModelRecord& component) {
  if (component.placement.text.empty()) return {};
  const PlacementRecord record = placementRecord(component.placement);
  Measurer measurer(assembly);
  try {
    return measurer.placement(&record);
  } catch (const MeasureFault& fault) {
    throw MeasureFault{L"component " + text::fromUtf8(component.name) + L": " + fault.reason};
  }
}

}  // namespace headless
