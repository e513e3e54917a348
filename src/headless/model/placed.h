// The components of an assembly that count as geometry, with where they stand.
#pragma once

#include <unordered_set>

#include "creo/ProTransform.h"
#include "headless/model/model.h"

namespace headless {

class Models;         // models.h
struct ModelFeature;  // features.h

// What the simplified representation in memory leaves out of a solid: features of a part, components of an assembly.
// Symbolic ones are left out too; all others count whole. Nothing is left out of the forms that Creo makes by itself.
class LeftOut {
 public:
  explicit LeftOut(const Model& solid);
  // feature: an id; 0 for what belongs to none.
  [[nodiscard]] bool has(int feature) const;

 private:
  bool byDefault_ = false;
  std::unordered_set<int> exceptions_;
};

struct PlacedModel {
  const Model* model = nullptr;
  creo::ProTransform place;  // in the assembly's coordinates and units
  int feature = 0;           // the id of the component
};
// In the order of the features; without those that are suppressed or left out of the representation in memory,
// skeletons and what isn't in memory. Throws MeasureFault.
std::vector<PlacedModel> placedComponents(const Models& models, const Model& assembly);

// The model of a component; null where that isn't in memory.
Model* componentModel(const Models& models, const ModelFeature& component);
// Where a component stands in its assembly. Throws MeasureFault.
creo::ProTransform componentPlacement(const Model& assembly, const UsedModelRecord& component);
// Has a feature geometry: not one that is suppressed in whatever way, or has lost a feature that it refers to. id 0: no
// feature stands behind it.
bool hasGeometry(const Model& solid, int feature);

// By what a number of `unit` in the units of one model is multiplied to become one of the other's.
double unitRatio(std::string_view unit, const Model& from, const Model& to);

}  // namespace headless
