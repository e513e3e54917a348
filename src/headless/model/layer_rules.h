// What the rules of a layer find. docs/model-document.md has their form.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "headless/model/model.h"

namespace headless {

// "type = datum plane & name = A*": things of that type whose name fits, case-blind.
struct LayerRule {
  creo::ProItemType type = creo::ProItemType::feature;
  int featureType = 0;          // Creo's code; 0: features of all types
  std::wstring pattern = L"*";  // "*" stands for any letters
};
// Nothing for a text of another form: it is kept, and finds nothing.
std::optional<LayerRule> layerRule(std::string_view text);

// The things of the model that the layer's rules find and that don't lie on it themselves, each once. None for a layer
// that isn't made by rules.
std::vector<creo::ProModelitem> foundByRules(const Model& model, const LayerRecord& layer);

// The rules were set. What they find is put on the layer; where they are associative it is found anew each time that
// somebody looks instead, and what was put there for it goes. True: the layer changed.
bool settleRules(const Model& model, LayerRecord& layer);

}  // namespace headless
