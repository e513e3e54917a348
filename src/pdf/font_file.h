// Files of fonts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/fault.h"

namespace pdf {

// Why the bytes are no font that a document can take in, a TrueType face with outlines and a Unicode table: "it is no
// TrueType font", "its table 'glyf' is missing".
text::Fault fontFault(std::string_view bytes);

// What a document has of a font for some of its glyphs (ISO 32000-1, 9.9): their outlines with all that these are made
// of, at any depth - an umlaut of a letter and an accent, the accent of dots - and their widths. All other glyphs keep
// their numbers and are empty. used: by number. Empty: there are no outlines.
std::string partOf(std::string_view font, std::vector<bool> used);

}  // namespace pdf
