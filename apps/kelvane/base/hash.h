// A short name for a content: FNV-1a with 64 bits. It tells one's own contents apart and keeps nobody out.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelvane {

class Hash {
 public:
  void add(std::string_view bytes) {
    for (const char c : bytes) value_ = (value_ ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  }
  [[nodiscard]] std::string hex() const {
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4) text += "0123456789abcdef"[(value_ >> shift) & 15U];
    return text;
  }

 private:
  std::uint64_t value_ = 0xcbf29ce484222325ULL;
};

inline std::string hexHash(std::string_view bytes) {
  Hash hash;
  hash.add(bytes);
  return hash.hex();
}

}  // namespace kelvane
