// How exactly the geometry of a solid is worked out.
#pragma once

#include "creo/ProSolid.h"
#include "headless/store/records.h"

namespace headless {

// What holds for a solid: what its document states, else relative 0.0012, which Creo's documentation names as the
// default. A solid always has one.
creo::ProAccuracy accuracyOf(const ModelRecord& solid);
// Gives a new solid the accuracy of the templates that Creo brings: absolute, 0.01 mm in the solid's units, 0.00039
// where these are inches.
void stateAccuracyOfTemplates(ModelRecord& solid);

}  // namespace headless
