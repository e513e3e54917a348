// What a part's material weighs.
#pragma once

#include <optional>

#include "headless/model/model.h"

namespace headless {

// The parameter PTC_MASS_DENSITY of the current material, in the part's system of units. Nothing without a material, or
// where that tells no positive number.
std::optional<double> materialDensity(const Model& part);

// The material's; where none is told, what was stated for the part, or else estimated.
std::optional<double> partDensity(const Model& part);

// Makes a positive number the density of the current material, in all parts that are made of it; without a material
// that of the part. One that holds already changes nothing, but for an estimated one, which counts as stated then.
void setPartDensity(Model& part, double density);

}  // namespace headless
