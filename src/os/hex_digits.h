#pragma once

#include <span>
#include <string>

namespace os {

inline std::string hexDigits(std::span<const unsigned char> bytes) {
  std::string digits;
  for (const unsigned char byte : bytes) {
    digits += "0123456789abcdef"[byte >> 4U];
    digits += "0123456789abcdef"[byte & 15U];
  }
  return digits;
}

}  // namespace os
