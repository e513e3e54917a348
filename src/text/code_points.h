// Walking a wide text by characters, whether its units have 16 bits (pairs of surrogates) or 32.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

template <class Char>
constexpr char32_t codeOf(Char c) {
  return sizeof(Char) == 2 ? static_cast<char16_t>(c) : static_cast<char32_t>(c);
}
constexpr bool isHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }
constexpr bool isSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }
// True for what a report or a note may hold: no control character (C0, DEL, C1), no surrogate, no non-character.
constexpr bool isPrintable(char32_t c) {
  const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
  const bool isNonCharacter = (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE;
  return !isControl && !isSurrogate(c) && !isNonCharacter && c <= kLastCodePoint;
}

// One character of a text: its number, how many wchar_t it takes and how many UTF-16 units it counts. A pair of
// surrogates is one character also where wchar_t has 32 bits; a lone one is a character of its own.
struct CodePoint {
  char32_t code;
  std::size_t length;
  std::size_t units;
};
template <class Char>
constexpr CodePoint codePointIn(std::basic_string_view<Char> text, std::size_t at) {
  const char32_t first = codeOf(text[at]);
  if (isHighSurrogate(first) && at + 1 < text.size() && isLowSurrogate(codeOf(text[at + 1]))) {
    return {0x10000 + ((first - 0xD800) << 10) + (codeOf(text[at + 1]) - 0xDC00), 2, 2};
  }
  return {first, 1, first > 0xFFFF ? std::size_t{2} : std::size_t{1}};
}
constexpr CodePoint codePointAt(std::wstring_view text, std::size_t at) { return codePointIn(text, at); }

// True when the answer, asked for the number of each character, is true for all of them.
template <class Char, class Asked>
constexpr bool allCharacters(std::basic_string_view<Char> text, Asked asked) {
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = codePointIn(text, at);
    if (!asked(next.code)) return false;
    at += next.length;
  }
  return true;
}

// The text with those characters alone for whose number the answer is true; in the place of each other one stands
// `instead`.
template <class Char, class Asked>
std::basic_string<Char> keptCharacters(std::basic_string_view<Char> text, Asked asked,
                                       std::basic_string_view<Char> instead = {}) {
  std::basic_string<Char> kept;
  kept.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = codePointIn(text, at);
    kept += asked(next.code) ? text.substr(at, next.length) : instead;
    at += next.length;
  }
  return kept;
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
