#include "os/memory.h"

#include <sys/mman.h>

#include <cstdlib>
#include <new>

namespace os {

std::byte* allocateLargePage() {
  void* const page = std::aligned_alloc(kLargePiece, kLargePiece);
  if (!page) throw std::bad_alloc();
  // Advice only: where it isn't followed, the piece has small pages.
  static_cast<void>(madvise(page, kLargePiece, MADV_HUGEPAGE));
  return static_cast<std::byte*>(page);
}

void freeLargePage(std::byte* page) noexcept { std::free(page); }

}  // namespace os
