// What kelvane show tells of the layers and states of a model, and of a solid's body, material and accuracy.
#pragma once

#include "kelvane/show_drawing.h"

namespace kelvane {

// Body, material, layers, layer states, views and states, accuracy, tolerance class and regeneration; what a model
// hasn't is an empty section.
std::vector<Section> solidSections(creo::ProMdl model);

}  // namespace kelvane
