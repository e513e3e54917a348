// Rows of the model table are named as the model's file: "BRACKET.PRT", in UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "creo/ProTypes.h"

namespace run {

// The name without its last four characters.
std::wstring rowModelName(std::string_view row);
// By the last three characters; a part where they say nothing.
creo::ProMdlType rowType(std::string_view row);
std::string rowName(std::wstring_view modelName, creo::ProMdlType type);

}  // namespace run
