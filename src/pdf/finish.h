// What the library that writes PDF files leaves to be put right.
#pragma once

#include <string>
#include <string_view>

#include "text/fault.h"

namespace pdf {

// The file with a font whose characters can be read back, in UTF-16 as they are written (ISO 32000-1, 9.10.3), and that
// has their glyphs alone, with all that these are made of. font: the TrueType file that texts are of; empty: they have
// no such font. A fault: the file can't be read.
text::Result<std::string> finished(const std::string& file, std::string_view font);

}  // namespace pdf
