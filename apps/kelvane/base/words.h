// Words that lines are put together of.
#pragma once

#include <string>
#include <string_view>

#include "headless/store/enum_texts.h"

namespace kelvane {

// As documents write it; empty for a value that they have no word for.
template <class E>
std::string word(E value) {
  for (const auto& [name, one] : headless::EnumTexts<E>::texts)
    if (one == value) return std::string(name);
  return {};
}

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
