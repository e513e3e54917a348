// What the actions on layers have in common.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/task.h"
#include "creo/ProLayer.h"

namespace actions {

constexpr int kMostLayerNames = 100;  // of a numbered list

// An instance is refused, since layers are its generic's.
constexpr Conditions kOnLayers = {kFilter, kModelThere, kNotInstance};

struct NamedLayer {
  creo::ProLayer layer;
  std::wstring name;
};
// The layers whose names fit a pattern, until `work` gives something else than ProNoError. work may delete layers: the
// walk is over those that were there at its start. False, with an error line: not all layers, or names of them, could
// be read.
bool eachLayer(creo::ProMdl model, std::wstring_view pattern,
               creo::FunctionRef<creo::ProError(const NamedLayer&)> work);

// A numbered attribute with its variables. Nothing, with an error line: it can't be used.
std::optional<std::wstring> filledIn(const Task& task, std::wstring_view value);

// "normal", "display", "blank"; nothing for any other word.
std::optional<creo::ProLayerDisplay> layerStatus(std::wstring_view word);

}  // namespace actions
