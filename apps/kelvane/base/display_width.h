// How much room texts take on a terminal.
#pragma once

#include <cstddef>
#include <string_view>

namespace kelvane {

// Columns of a terminal: two for wide characters (CJK, most emoji), none for combining marks, else one a character.
std::size_t displayWidth(std::wstring_view text);

}  // namespace kelvane
