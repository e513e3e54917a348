// What surely mends an attribute of an action or a filter. What is only likely isn't in here: a finding offers it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kelvane {

struct Mend {
  enum class Of : std::uint8_t { nothing, name, value };
  Of of = Of::nothing;
  std::string with;  // the new name or value; ASCII
};
// The word that a value was meant to be: letters alone, one slip in four of them or more, two in eight, or
// upper and lower case alone, and no other word is as near. A number isn't the slip of another one, nor "stp" of "stl".
Mend wordMend(std::string_view value, std::span<const std::string> words);
// "true" for "True".
Mend flagMend(std::string_view value);
// The attribute that an unknown name was meant to be: the nearest one, no other is as near, and it is lacked.
// lacked: the names any of which would give the one thing that is missing; none where nothing is, or more than one.
Mend nameMend(std::string_view name, std::span<const std::string> known, std::span<const std::string> lacked);

}  // namespace kelvane
