// Numbers that lists, files and models give as texts, read as C reads them: what follows a number is cut off, with a
// warning line that names the text and what was taken of it.
#pragma once

#include <optional>
#include <string_view>

namespace language {

// Nothing, and no line: the text doesn't begin with a number, or with one that is out of range or isn't finite.
std::optional<double> numberIn(std::wstring_view text);
std::optional<int> integerIn(std::wstring_view text);

// The same, but a text without a number is 0, an integer out of range the nearest end and a number that is too small 0:
// with the warning line, for an empty text without. Nothing, and no line: a number that is too large or isn't finite.
std::optional<double> numberOrZero(std::wstring_view text);
int integerOrZero(std::wstring_view text);

// The warning line.
void tellCut(std::wstring_view text, double taken);

}  // namespace language
