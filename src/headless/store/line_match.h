// Which lines of two texts are the same ones.
#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace headless {

// Places of lines that belong together, ascending in both texts. Lines that stand once in each text lead; between them
// equal ones are found where few lie there. The cost is near that of the lines, whatever they hold.
std::vector<std::pair<std::size_t, std::size_t>> matchedLines(const std::vector<std::string_view>& before,
                                                              const std::vector<std::string_view>& after);

}  // namespace headless
