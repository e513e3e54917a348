#include "os/memory.h"

#include <sys/mman.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace os {

std::byte* allocateLargePage() {
  void* const page = std::aligned_alloc(kLargePiece, kLargePiece);
  if (!page) throw std::bad_alloc();
  // Most processes need a part of their first one, which fills a small page at a time. Advice only: where it isn't
  // followed, the system decides.
  static std::atomic<bool> hasOne = false;
  static_cast<void>(madvise(page, kLargePiece, hasOne.exchange(true) ? MADV_HUGEPAGE : MADV_NOHUGEPAGE));
  return static_cast<std::byte*>(page);
}

void freeLargePage(std::byte* page) noexcept { std::free(page); }

}  // namespace os
