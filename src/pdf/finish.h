// What the library that writes PDF files leaves to be put right.
#pragma once

#include <string>
#include <string_view>

#include "text/fault.h"

namespace pdf {

// The file with fonts whose characters can be read back, in UTF-16 as they are written (ISO 32000-1, 9.10.3), and whose
// glyphs have all that they are made of. font: the TrueType font that it has a subset of; empty: none. A fault: it
// can't be read.
text::Result<std::string> finished(const std::string& file, std::string_view font);

}  // namespace pdf
