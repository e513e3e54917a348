// Words that lines are put together of.
#pragma once

#include <string>
#include <string_view>

namespace kelvane {

// Puts a piece behind what is there already; an empty piece is none.
inline void addPiece(std::string& to, std::string_view piece, std::string_view between = ", ") {
  if (piece.empty()) return;
  if (!to.empty()) to += between;
  to += piece;
}

// "1 item", "2 items".
inline std::string counted(std::size_t count, std::string_view what) {
  return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

}  // namespace kelvane
