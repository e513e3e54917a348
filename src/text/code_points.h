// Walking a wide text by characters, whether its units have 16 bits (pairs of surrogates) or 32.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

constexpr char32_t codeOf(wchar_t c) {
  return sizeof(wchar_t) == 2 ? static_cast<char16_t>(c) : static_cast<char32_t>(c);
}
constexpr bool isHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }
constexpr bool isSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

// One character of a text: its number, how many wchar_t it takes and how many UTF-16 units it counts. A pair of
// surrogates is one character also where wchar_t has 32 bits; a lone one is a character of its own.
struct CodePoint {
  char32_t code;
  std::size_t length;
  std::size_t units;
};
constexpr CodePoint codePointAt(std::wstring_view text, std::size_t at) {
  const char32_t first = codeOf(text[at]);
  if (isHighSurrogate(first) && at + 1 < text.size() && isLowSurrogate(codeOf(text[at + 1]))) {
    return {0x10000 + ((first - 0xD800) << 10) + (codeOf(text[at + 1]) - 0xDC00), 2, 2};
  }
  return {first, 1, first > 0xFFFF ? std::size_t{2} : std::size_t{1}};
}

// Writes a character, at most kLastCodePoint; the place behind it.
constexpr wchar_t* putCodePoint(wchar_t* to, char32_t code) {
  if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
    *to++ = static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
    *to++ = static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
  } else {
    *to++ = static_cast<wchar_t>(code);
  }
  return to;
}

// Appends a character; code is at most kLastCodePoint.
inline void appendCodePoint(std::wstring& to, char32_t code) {
  wchar_t letters[2];
  to.append(letters, putCodePoint(letters, code));
}

}  // namespace text
