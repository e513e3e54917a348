// Whole numbers of JSON values that strangers may have written.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <utility>

namespace text {

// A JSON value as a whole number; nothing for all else, for a fraction, and for what the type can't hold: the JSON
// library converts a number of any size, which C++ leaves undefined.
template <class Whole, class Json>
std::optional<Whole> wholeNumber(const Json& value) {
  const auto held = [](auto number) {
    return std::in_range<Whole>(number) ? std::optional<Whole>(number) : std::nullopt;
  };
  if (value.is_number_unsigned()) return held(value.template get<std::uint64_t>());
  if (value.is_number_integer()) return held(value.template get<std::int64_t>());
  return std::nullopt;
}

// The same for one that has to be there. Throws std::out_of_range.
template <class Whole, class Json>
Whole neededWhole(const Json& value) {
  const auto number = wholeNumber<Whole>(value);
  if (!number) throw std::out_of_range("a value isn't a whole number, or is too large");
  return *number;
}

}  // namespace text
