// Files of appearances: named looks of models.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProAppearance.h"
#include "text/fault.h"

namespace actions {

// A line "[name]" begins a look, the lines behind it say what it is: "color" with red, green and blue, "ambient",
// "diffuse", "highlight", "shininess", "transparency" with a number; all from 0 to 1. Empty lines and those that begin
// with "!" say nothing.
// The looks in the file's order, each with its name as label. A fault names the file, and the line if one is wrong.
text::Result<std::vector<creo::ProAppearance>> readAppearanceFile(const std::wstring& path);

// Null for none; case-blind. An empty name stands for the first one.
const creo::ProAppearance* lookNamed(const std::vector<creo::ProAppearance>& looks, std::wstring_view name);

}  // namespace actions
