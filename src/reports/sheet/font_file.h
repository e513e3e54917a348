// Files of fonts.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "text/fault.h"

namespace reports::sheet {

// Why the bytes are no font that a document can take in, a TrueType face with outlines and a Unicode table: "it is no
// TrueType font", "its table 'glyf' is missing".
text::Fault fontFault(std::string_view bytes);

// Marks what the marked glyphs are made of, at any depth: an umlaut of a letter and an accent, the accent of dots. The
// bytes are a font; used: a mark for each glyph, by its number.
void markComponents(std::string_view font, std::span<std::uint8_t> used);

}  // namespace reports::sheet
