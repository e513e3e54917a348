// Names in records are UTF-8 and compared case-blind: ASCII and the three German umlauts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

std::string folded(std::string_view name);
bool sameName(std::string_view a, std::string_view b);
std::size_t nameHash(std::string_view name);

// Finds positions in a list by name without looking at the whole list. It keeps positions only, so that it is small; it
// is made when first asked for and dropped when the list changes otherwise than by growing.
class NameIndex {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  // The first position below `count` whose name is `name`; nameAt(i) gives a position's name.
  template <class NameAt>
  std::size_t find(std::string_view name, std::size_t count, NameAt nameAt) {
    if (count <= kScan) {
      for (std::size_t i = 0; i < count; ++i)
        if (sameName(nameAt(i), name)) return i;
      return kNone;
    }
    catchUp(count, nameAt);
    for (std::size_t at = nameHash(name);; ++at) {
      const std::uint32_t present = slots_[at & (slots_.size() - 1)];
      if (present == 0) return kNone;
      if (sameName(nameAt(present - 1), name)) return present - 1;
    }
  }
  void drop() {
    slots_ = {};
    held_ = 0;
  }

 private:
  static constexpr std::size_t kScan = 12;

  template <class NameAt>
  void catchUp(std::size_t count, NameAt nameAt) {
    if (held_ > count) drop();
    if (slots_.size() < count * 2) {
      std::size_t size = 32;
      while (size < count * 3) size *= 2;
      slots_.assign(size, 0);
      held_ = 0;
    }
    for (; held_ < count; ++held_) {
      for (std::size_t at = nameHash(nameAt(held_));; ++at) {
        std::uint32_t& slot = slots_[at & (slots_.size() - 1)];
        if (slot == 0) slot = static_cast<std::uint32_t>(held_ + 1);
        if (slot == held_ + 1 || sameName(nameAt(slot - 1), nameAt(held_))) break;  // the first of a name stays
      }
    }
  }

  std::vector<std::uint32_t> slots_;  // position + 1; 0 is free
  std::size_t held_ = 0;
};

}  // namespace headless
