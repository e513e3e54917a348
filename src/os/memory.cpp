#include "os/memory.h"

#include <array>
#include <mutex>

namespace os {
namespace {

// What was given back last.
class Kept {
 public:
  // Null when nothing is kept.
  std::byte* take() {
    const std::lock_guard guard(mutex_);
    return count_ == 0 ? nullptr : pages_[--count_];
  }
  // False when enough is kept.
  bool put(std::byte* page) {
    const std::lock_guard guard(mutex_);
    if (count_ == pages_.size()) return false;
    pages_[count_++] = page;
    return true;
  }

 private:
  std::mutex mutex_;
  std::array<std::byte*, 16> pages_{};
  std::size_t count_ = 0;
};

// Never destroyed, since static objects may hold pieces to the very end.
Kept& kept() {
  static Kept& pages = *new Kept();
  return pages;
}

}  // namespace

void ReturnLargePiece::operator()(std::byte* piece) const noexcept {
  if (!kept().put(piece)) freeLargePage(piece);
}

LargePiece largePiece() {
  std::byte* const page = kept().take();
  return LargePiece(page ? page : allocateLargePage());
}

}  // namespace os
