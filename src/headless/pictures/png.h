// Pictures of dots as PNG files.
#pragma once

#include <string>

#include "headless/pictures/image.h"

namespace headless {

// The bytes of a file. Throws std::runtime_error with the library's words.
std::string pngOf(const Image& image);

}  // namespace headless
