// Numbers in attributes and small text files.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace actions {

// Finite numbers with blanks, commas or semicolons between them. Nothing where a piece is no number.
std::optional<std::vector<double>> numberList(std::wstring_view text);

}  // namespace actions
