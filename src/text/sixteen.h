// Sixteen bytes looked at in one step, for scans of long texts.
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

  // Of sixteen wide characters, one a byte; those above U+00FF are 0xFF or 0.
  static Sixteen narrowed(const wchar_t* at) {
    Sixteen all;
    all.narrow(at);
    return all;
  }

#ifdef KVD_SIXTEEN_SSE2
  // Those that are one of some characters.
  template <class... Chars>
  [[nodiscard]] unsigned anyOf(Chars... chars) const {
    __m128i found = _mm_setzero_si128();
    ((found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes_, _mm_set1_epi8(chars)))), ...);
    return mask(found);
  }
  // Those beyond ASCII.
  [[nodiscard]] unsigned high() const { return mask(bytes_); }

 private:
  Sixteen() = default;
  void load(const char* at) { std::memcpy(&bytes_, at, kSize); }
  void narrow(const wchar_t* at) {
    const auto vector = [at](std::size_t i) {
      __m128i wide;
      std::memcpy(&wide, at + i * (kSize / sizeof(wchar_t)), kSize);
      return wide;
    };
    if constexpr (sizeof(wchar_t) == 4)
      bytes_ = _mm_packus_epi16(_mm_packs_epi32(vector(0), vector(1)), _mm_packs_epi32(vector(2), vector(3)));
    else
      bytes_ = _mm_packus_epi16(vector(0), vector(1));
  }
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
  Sixteen() = default;
  void load(const char* at) { std::copy_n(at, kSize, bytes_.data()); }
  void narrow(const wchar_t* at) {
    for (std::size_t i = 0; i < kSize; ++i)
      bytes_[i] = static_cast<char>(static_cast<char32_t>(at[i]) < 0xFF ? at[i] : 0xFF);
  }
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
