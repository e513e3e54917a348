// What kelvane show tells of the layers and states of a model.
#pragma once

#include "headless/model/models.h"
#include "kelvane/show/drawing.h"

namespace kelvane {

// Layers with their items and rules, default layers, layer states; what a model hasn't is an empty section.
std::vector<Section> layerSections(const headless::Model& model);
// Of a solid: views and states by name, representations, combined states and cross sections with what they say.
std::vector<Section> stateSections(const headless::Model& model);

}  // namespace kelvane
