// The bars and spaces of PDF417's symbol characters.
#pragma once

#include <array>
#include <cstdint>

namespace barcode {

constexpr int kCodewords = 929;  // of the symbology: the numbers 0 to 928
constexpr int kClusters = 3;     // rows take them in turn

// By cluster (0, 3 and 6 of the symbology) and codeword: the 16 modules behind the first one, which is always dark; the
// leftmost is the highest bit, 1 is dark.
extern const std::array<std::array<std::uint16_t, kCodewords>, kClusters> kPatterns;

}  // namespace barcode
