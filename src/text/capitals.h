// Capitals and small letters of Europe's alphabets, for texts that shall be written so. It has no part in comparing:
// case-blind is what letters.h says.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Each character by itself, so that the length stays: "\u00DF" has no capital, and the sign of a millionth, which looks
// like a Greek letter, stays as it is.
std::wstring inCapitals(std::wstring_view text);
std::wstring inSmallLetters(std::wstring_view text);

}  // namespace text
