#include "headless/model/placed.h"

#include "headless/model/features.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"
#include "headless/model/parents.h"
#include "headless/model/records.h"
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

namespace {

bool leavesOut(creo::ProSimprepAction action, creo::ProSimprepAction byDefault) {
  using creo::ProSimprepAction;
  if (action == ProSimprepAction::reverse) return !leavesOut(byDefault, ProSimprepAction::include);
  return action == ProSimprepAction::exclude || action == ProSimprepAction::symbolic;
}

}  // namespace

LeftOut::LeftOut(const Model& solid) {
  const SimplifiedRepRecord* rep = recordNamed(solid.document->record.simplifiedReps, solid.document->activeRep);
  if (!rep) return;
  byDefault_ = leavesOut(rep->defaultAction, creo::ProSimprepAction::include);
  for (const SimplifiedRepItemRecord& item : rep->items)
    if (leavesOut(item.action, rep->defaultAction) != byDefault_) exceptions_.insert(item.feature);
}

bool LeftOut::has(int feature) const { return exceptions_.contains(feature) != byDefault_; }

Model* componentModel(const Models& models, const ModelFeature& component) {
  const auto handle = models.inMemory(featureName(component), component.component()->type);
  return handle ? models.find(handle.value) : nullptr;
}

std::vector<PlacedModel> placedComponents(const Models& models, const Model& assembly) {
  std::vector<PlacedModel> placed;
  const LeftOut leftOut(assembly);
  for (const ModelFeature& feature : featuresOf(assembly)) {
    const int id = feature.place.id;
    if (!feature.isComponent() || leftOut.has(id) || !hasGeometry(assembly, id)) continue;
    const Model* model = componentModel(models, feature);
    if (!model || model->document->record.skeleton) continue;
    placed.push_back({model, componentPlacement(assembly, *feature.component()), id});
  }
  return placed;
}

bool hasGeometry(const Model& solid, int feature) {
  if (feature == 0) return true;
  const auto found = featureOf(solid, feature);
  if (!found) return true;
  return isInUse(featureStatus(*found)) && keepsParents(*found);
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
