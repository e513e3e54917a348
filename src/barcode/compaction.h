// A text as the fewest codewords of PDF417.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace barcode {

// A longer one fits no code, whatever it is: behind a latch 924 codewords hold 44 digits in each 15.
constexpr std::size_t kLongestText = 2710;

// Text, byte and numeric compaction, in the order of modes, latches and shifts that takes the fewest codewords; from
// the state in which every code begins. text: Latin-1, at most kLongestText characters.
std::vector<int> compacted(std::string_view text);

}  // namespace barcode
