// What a part's material weighs.
#pragma once

#include <optional>

#include "headless/model/models.h"

namespace headless {

// The parameter PTC_MASS_DENSITY of the current material, in the part's system of units. Nothing without one.
std::optional<double> materialDensity(const Model& part);

// What was stated for the part, or else estimated; else its material's.
std::optional<double> partDensity(const Model& part);

}  // namespace headless
