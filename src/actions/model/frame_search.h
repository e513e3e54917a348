// Which model a drawing's frames are about.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "creo/ProDrawing.h"

namespace actions {

// The tables that come from the formats of a drawing's sheets name a model by its number, as in "&model_name:2". Where
// all name the same, that model out of models; nothing, with a line, for none or several. The drawing's content and
// its current sheet are as before.
std::optional<creo::ProMdl> modelOfFrames(creo::ProMdl drawing, const std::vector<creo::ProMdl>& models);

}  // namespace actions
