// The settings of a drawing's own.
#pragma once

#include <cstddef>
#include <string_view>

#include "headless/model/document.h"

namespace headless {

// Takes the lines "name value" of a file over into the drawing; "!" begins a comment. An option that is there takes the
// new value, its name case-blind. How many lines were none: such a line has no value, or no name of an option.
std::size_t readDetailOptions(ModelDocument& drawing, std::wstring_view content);

}  // namespace headless
