// Texts broken and cut so that they fit into columns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"

namespace reports::sheet {

// How wide a character is, in any unit.
using Advance = creo::FunctionRef<double(wchar_t)>;

// A text of characters that can stand on a line: control characters are blanks, what lies beyond the basic plane, which
// documents can't show, is the replacement mark.
std::wstring printable(std::wstring_view text);
double widthOf(std::wstring_view text, Advance advance);
// Lines at most as wide as that: broken at a blank, which goes, or behind one of "\/-_;", else within a word. A line
// has at least one character; an empty text is one empty line. The text is printable.
std::vector<std::wstring> wrapped(std::wstring_view text, double width, Advance advance);
// The text, or as much of it as fits with an ellipsis behind.
std::wstring cutTo(std::wstring_view text, double width, Advance advance);

}  // namespace reports::sheet
