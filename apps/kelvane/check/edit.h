// Changes of a file's bytes, by their places.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

struct Piece {
  std::size_t at = 0, size = 0;  // bytes
  [[nodiscard]] std::string_view of(std::string_view bytes) const { return bytes.substr(at, size); }
};
// What stands at the piece becomes `with`.
struct Edit {
  Piece piece;
  std::string with;
};
using Edits = std::vector<Edit>;

}  // namespace kelvane
