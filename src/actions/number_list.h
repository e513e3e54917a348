// Numbers in attributes and small text files.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace actions {

// A finite decimal number that is the whole text, blanks around it aside.
std::optional<double> wholeNumber(std::wstring_view text);
// Numbers with blanks, commas or semicolons between them. Nothing where a piece is no number.
std::optional<std::vector<double>> numberList(std::wstring_view text);

}  // namespace actions
