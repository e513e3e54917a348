// What kelvane show tells of the layers and states of a model, and of a solid's body, material and accuracy.
#pragma once

#include "kelvane/show/drawing.h"

namespace kelvane {

// Settings (accuracy, tolerance class, regeneration, density, appearances), body, materials, states and layers; what a
// model hasn't is an empty section.
std::vector<Section> solidSections(creo::ProMdl model);

}  // namespace kelvane
