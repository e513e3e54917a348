// The components of an assembly that count as geometry, with where they stand.
#pragma once

#include "creo/ProTransform.h"
#include "headless/model/models.h"

namespace headless {

struct PlacedModel {
  const Model* model = nullptr;
  creo::ProTransform place;  // in the assembly's coordinates and units
};
// In the order of the features; without those that are suppressed, skeletons and what isn't in memory. Throws
// MeasureFault.
std::vector<PlacedModel> placedComponents(const Models& models, const Model& assembly);

// By what a number of `unit` in the units of one model is multiplied to become one of the other's.
double unitRatio(std::string_view unit, const Model& from, const Model& to);

}  // namespace headless
