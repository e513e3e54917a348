// Digits that nobody can guess.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace kelvane {

// So many hexadecimal ones, from the system's own source.
inline std::string randomDigits(std::size_t count) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::random_device random;
  std::uniform_int_distribution<std::size_t> digit(0, kDigits.size() - 1);
  std::string digits;
  while (digits.size() < count) digits += kDigits[digit(random)];
  return digits;
}

}  // namespace kelvane
