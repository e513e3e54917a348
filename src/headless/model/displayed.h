// What of an assembly is shown: pictures, prints and sheets ask here.
#pragma once

#include <vector>

#include "headless/model/placed.h"

namespace headless {

struct DisplayedModel {
  const Model* model = nullptr;
  creo::ProTransform place;  // in the assembly's coordinates and units
  bool transparent = false;
};
// The components that count as geometry, without those on a layer that is blanked or hidden and those that the active
// style blanks; the active exploded state moves them. Masses and outlines don't ask here. Throws MeasureFault.
std::vector<DisplayedModel> displayedComponents(const Models& models, const Model& assembly);

}  // namespace headless
