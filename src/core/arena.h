// Memory for many small records that live and die together.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace core {

// Hands out pieces of large chunks and gives all of them back at once, without a walk over what they hold.
class Arena {
 public:
  template <class T>
  T* make() {
    static_assert(std::is_trivially_destructible_v<T>, "an arena runs no destructors");
    return new (take(sizeof(T), alignof(T))) T{};
  }
  wchar_t* letters(std::size_t count) { return new (take(count * sizeof(wchar_t), alignof(wchar_t))) wchar_t[count]; }

 private:
  static constexpr std::size_t kFirstChunk = 4096;
  static constexpr std::size_t kLargestChunk = std::size_t{1} << 20;

  std::byte* take(std::size_t size, std::size_t alignment) {
    const std::size_t padding = (alignment - used_ % alignment) % alignment;
    if (size + padding > size_ - used_) {
      size_ = std::max(size, std::clamp(size_ * 2, kFirstChunk, kLargestChunk));
      chunks_.push_back(std::make_unique_for_overwrite<std::byte[]>(size_));
      used_ = size;
      return chunks_.back().get();
    }
    std::byte* piece = chunks_.back().get() + used_ + padding;
    used_ += padding + size;
    return piece;
  }

  std::vector<std::unique_ptr<std::byte[]>> chunks_;
  std::size_t size_ = 0, used_ = 0;  // of the last chunk
};

}  // namespace core
