// Files of fonts.
#pragma once

#include <string>
#include <string_view>

#include "text/fault.h"

namespace pdf {

// Why the bytes are no font that a document can take in, a TrueType face with outlines and a Unicode table: "it is no
// TrueType font", "its table 'glyf' is missing".
text::Fault fontFault(std::string_view bytes);

// A subset, as a document holds it, with all that its glyphs are made of, at any depth: an umlaut of a letter and an
// accent, the accent of dots. font: the whole font; a subset that isn't one of it comes back as it is.
std::string withComponents(std::string_view subset, std::string_view font);

}  // namespace pdf
