// Memory in large pieces, for what is filled once and goes as a whole.
#pragma once

#include <cstddef>
#include <memory>

namespace os {

constexpr std::size_t kLargePiece = std::size_t{2} << 20;  // bytes; a large page of the usual processors

struct ReturnLargePiece {
  void operator()(std::byte* piece) const noexcept;
};
using LargePiece = std::unique_ptr<std::byte, ReturnLargePiece>;

// kLargePiece bytes of any content. Touching fresh memory a small page at a time costs far more than filling it. So
// a piece is a large page where the system has such, and the last few that were given back are kept for the next use.
LargePiece largePiece();

// The system's part: a piece aligned to its size, or bad_alloc; and its way back.
std::byte* allocateLargePage();
void freeLargePage(std::byte* page) noexcept;

}  // namespace os
