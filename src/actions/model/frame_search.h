// Which model a drawing's frames are about.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProDrawing.h"

namespace actions {

// The tables that come from the formats of a drawing's sheets name a model by its number, as in "&model_name:2". Where
// all name the same, that model out of models; nothing, with a line, for none or several. The drawing's content and
// its current sheet are as before.
std::optional<creo::ProMdl> modelOfFrames(creo::ProMdl drawing, const std::vector<creo::ProMdl>& models);

// The number of a model in a symbolic text: what follows the second colon of "{0:&model_name:2}", or the colon of a
// form. Nothing for a text that names none.
std::optional<int> modelNumberIn(std::wstring_view line);
// The one of models that has that number in the drawing, as a table of one cell shows it that is gone afterwards.
// failureLevel: of the line about a table that can't be made.
std::optional<creo::ProMdl> modelOfNumber(creo::ProMdl drawing, const std::vector<creo::ProMdl>& models, int number,
                                          int failureLevel);

}  // namespace actions
