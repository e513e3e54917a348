// Memory for many small records that live and die together.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

#include "os/memory.h"

namespace os {

// Hands out pieces of large chunks and gives all of them back at once, without a walk over what they hold.
class Arena {
 public:
  template <class T>
  T* make() {
    static_assert(std::is_trivially_destructible_v<T>, "an arena runs no destructors");
    return new (take(sizeof(T), alignof(T))) T{};
  }
  // `count` characters of any content.
  template <class Char>
  Char* letters(std::size_t count) {
    return new (take(count * sizeof(Char), alignof(Char))) Char[count];
  }

 private:
  // Few records get little memory, many get large pieces.
  static constexpr std::size_t kFirstChunk = 4096;
  static constexpr std::size_t kSecondChunk = std::size_t{16} * kFirstChunk;

  std::byte* take(std::size_t size, std::size_t alignment) {
    const std::size_t padding = (alignment - used_ % alignment) % alignment;
    if (size + padding > size_ - used_) return takeFresh(size);
    std::byte* const piece = chunk_ + used_ + padding;
    used_ += padding + size;
    return piece;
  }

  std::byte* takeFresh(std::size_t size) {
    const std::size_t next = size_ == 0 ? kFirstChunk : size_ == kFirstChunk ? kSecondChunk : kLargePiece;
    if (size > next / 4) {  // a chunk of its own; the present one goes on
      chunks_.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
      return chunks_.back().get();
    }
    if (next == kLargePiece) {
      pieces_.push_back(largePiece());
      chunk_ = pieces_.back().get();
    } else {
      chunks_.push_back(std::make_unique_for_overwrite<std::byte[]>(next));
      chunk_ = chunks_.back().get();
    }
    size_ = next;
    used_ = size;
    return chunk_;
  }

  std::vector<std::unique_ptr<std::byte[]>> chunks_;
  std::vector<LargePiece> pieces_;
  std::byte* chunk_ = nullptr;       // the present one
  std::size_t size_ = 0, used_ = 0;  // of it
};

}  // namespace os
