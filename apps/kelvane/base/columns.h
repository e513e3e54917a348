// Aligned columns of text.
#pragma once

#include <string>
#include <vector>

namespace kelvane {

// One line a row; columns are parted by two blanks, the last one isn't padded, and a line has no blanks at its end.
// Widths are those of a terminal, control characters are escapes.
std::vector<std::string> aligned(std::vector<std::vector<std::string>> rows);

}  // namespace kelvane
