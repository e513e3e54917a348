// Things found by name without making a string of it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace headless {

struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
};
template <class T>
using NameMap = std::unordered_map<std::string, T, NameHash, std::equal_to<>>;

}  // namespace headless
