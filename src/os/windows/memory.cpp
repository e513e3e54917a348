#include "os/memory.h"

#include <malloc.h>

#include <new>

namespace os {

// Large pages need a right here that hardly anybody has.
std::byte* allocateLargePage() {
  void* const page = ::_aligned_malloc(kLargePiece, kLargePiece);
  if (!page) throw std::bad_alloc();
  return static_cast<std::byte*>(page);
}

void freeLargePage(std::byte* page) noexcept { ::_aligned_free(page); }

}  // namespace os
