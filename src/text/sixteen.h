// Sixteen bytes looked at in one step, for scans of long narrow texts.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define KVD_SIXTEEN_SSE2 1
#endif

namespace text {

// Answers are masks: bit i is set when byte i is such a one.
class Sixteen {
 public:
  static constexpr std::size_t kSize = 16;

  // Of the bytes at a place; of those that are no more there, as zeros.
  explicit Sixteen(const char* at, std::size_t left = kSize) {
    if (left >= kSize) {
      load(at);
    } else {
      std::array<char, kSize> padded{};
      std::copy_n(at, left, padded.data());
      load(padded.data());
    }
  }

#ifdef KVD_SIXTEEN_SSE2
  // Those that are one of some characters.
  template <class... Chars>
  [[nodiscard]] unsigned anyOf(Chars... chars) const {
    return mask((_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(chars)) | ...));
  }
  // Those beyond ASCII.
  [[nodiscard]] unsigned high() const { return mask(bytes_); }

 private:
  void load(const char* at) { std::memcpy(&bytes_, at, kSize); }
  static unsigned mask(__m128i bytes) { return static_cast<unsigned>(_mm_movemask_epi8(bytes)); }
  __m128i bytes_;
#else
  template <class... Chars>
  [[nodiscard]] unsigned anyOf(Chars... chars) const {
    return mask([=](char byte) { return ((byte == chars) || ...); });
  }
  [[nodiscard]] unsigned high() const {
    return mask([](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
  }

 private:
  void load(const char* at) { std::copy_n(at, kSize, bytes_.data()); }
  template <class F>
  unsigned mask(F asked) const {
    unsigned bits = 0;
    for (std::size_t i = 0; i < kSize; ++i) bits |= asked(bytes_[i]) ? 1U << i : 0U;
    return bits;
  }
  std::array<char, kSize> bytes_;
#endif
};

}  // namespace text
