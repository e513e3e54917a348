// Which file set a configuration key. Slots are numbered in the order of the keys that keep a source; the info dialog
// prints them.
#pragma once

#include <array>

namespace core {

enum class OptionSource : int { byDefault = -1, mainFile = 0, userFile = 1 };

constexpr std::array<OptionSource, 50> allDefault() {
  std::array<OptionSource, 50> all{};
  for (auto& source : all) source = OptionSource::byDefault;
  return all;
}

}  // namespace core
