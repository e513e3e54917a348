// Files of fonts.
#pragma once

#include <string>
#include <string_view>

namespace reports::sheet {

// Why the bytes are no font that a document can take in, a TrueType face with outlines and a Unicode table: "it is no
// TrueType font", "its table 'glyf' is missing". Empty: they are one.
std::wstring fontFault(std::string_view bytes);

}  // namespace reports::sheet
