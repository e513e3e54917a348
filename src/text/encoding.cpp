#include "text/encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/code_points.h"
#include "text/sixteen.h"

namespace text {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

unsigned char byteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

// The valid sequence at a place, or length 0: no overlong forms, no surrogates, nothing beyond U+10FFFF.
struct Sequence {
  char32_t code = 0;
  std::size_t length = 0;
};
Sequence sequenceAt(std::string_view bytes, std::size_t at) {
  const unsigned char first = byteAt(bytes, at);
  if (first < 0x80) return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || at + length > bytes.size()) return {};
  static constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  char32_t code = first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = byteAt(bytes, at + i);
    if ((next & 0xC0U) != 0x80) return {};
    code = (code << 6) | (next & 0x3FU);
  }
  if (code < kSmallest[length] || code > kLastCodePoint || isSurrogate(code)) return {};
  return {code, length};
}

// Bytes 0x80 to 0x9F; the rest of the code page is Latin-1.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                                   0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

char toWindows1252Byte(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(static_cast<unsigned char>(code));
  for (std::size_t i = 0; i < kWindows1252.size(); ++i) {
    if (code == kWindows1252[i] && code != kReplacement) return static_cast<char>(static_cast<unsigned char>(0x80 + i));
  }
  return '?';
}

template <class ToByte>
std::string toSingleBytes(std::wstring_view text, ToByte toByte) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint c = codePointAt(text, at);
    bytes += toByte(c.code);
    at += c.length;
  }
  return bytes;
}

// Length of the ASCII characters at the start: nearly all of most texts, and copied as they are.
std::size_t asciiRun(std::string_view bytes) {
  std::size_t at = 0;
  while (bytes.size() - at >= Sixteen::kSize && Sixteen(bytes.data() + at).high() == 0) at += Sixteen::kSize;
  while (at < bytes.size() && byteAt(bytes, at) < 0x80) ++at;
  return at;
}

}  // namespace

std::wstring fromUtf8(std::string_view bytes) {
  std::wstring text(bytes.size(), L'\0');
  text.resize(fromUtf8(bytes, text.data()));
  return text;
}

std::size_t fromUtf8(std::string_view bytes, wchar_t* out) {
  wchar_t* const begin = out;
  while (!bytes.empty()) {
    const std::size_t plain = asciiRun(bytes);
    out = std::copy_n(bytes.data(), plain, out);
    bytes.remove_prefix(plain);
    if (bytes.empty()) break;
    const Sequence next = sequenceAt(bytes, 0);
    out = putCodePoint(out, next.length == 0 ? kReplacement : next.code);
    bytes.remove_prefix(next.length == 0 ? 1 : next.length);
  }
  return static_cast<std::size_t>(out - begin);
}

std::string toUtf8(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  const auto put = [&bytes](char32_t value) { bytes += static_cast<char>(static_cast<unsigned char>(value)); };
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = codePointAt(text, at);
    at += next.length;
    const char32_t code = next.code > kLastCodePoint || isSurrogate(next.code) ? kReplacement : next.code;
    if (code < 0x80) {
      put(code);
      continue;
    }
    if (code < 0x800) {
      put(0xC0 | (code >> 6));
    } else {
      if (code < 0x10000) {
        put(0xE0 | (code >> 12));
      } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
      }
      put(0x80 | ((code >> 6) & 0x3F));
    }
    put(0x80 | (code & 0x3F));
  }
  return bytes;
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    bytes.remove_prefix(asciiRun(bytes));
    if (bytes.empty()) break;
    const std::size_t length = sequenceAt(bytes, 0).length;
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::wstring fromLatin1(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  for (const char c : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(c));
  return text;
}

std::string toLatin1(std::wstring_view text) {
  return toSingleBytes(
      text, [](char32_t code) { return code > 0xFF ? '?' : static_cast<char>(static_cast<unsigned char>(code)); });
}

std::wstring fromWindows1252(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += byte >= 0x80 && byte < 0xA0 ? static_cast<wchar_t>(kWindows1252[byte - 0x80U]) : static_cast<wchar_t>(byte);
  }
  return text;
}

std::string toWindows1252(std::wstring_view text) { return toSingleBytes(text, toWindows1252Byte); }

namespace {

// low: which byte of a pair stands first. A lone surrogate becomes the replacement, half a unit at the end is left out.
std::wstring fromUtf16(std::string_view bytes, std::size_t low) {
  const auto unitAt = [&](std::size_t at) {
    return static_cast<char32_t>(byteAt(bytes, at + low) | (byteAt(bytes, at + 1 - low) << 8U));
  };
  std::wstring text;
  text.reserve(bytes.size() / 2);
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t code = unitAt(at);
    const char32_t next = at + 3 < bytes.size() ? unitAt(at + 2) : 0;
    if (isHighSurrogate(code) && isLowSurrogate(next)) {
      code = 0x10000 + ((code - 0xD800) << 10U) + (next - 0xDC00);
      at += 2;
    }
    appendCodePoint(text, isSurrogate(code) ? kReplacement : code);
  }
  return text;
}

}  // namespace

std::wstring fromTextFile(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return fromUtf16(bytes.substr(2), 0);
  if (bytes.starts_with("\xFE\xFF")) return fromUtf16(bytes.substr(2), 1);
  if (bytes.starts_with(kUtf8Mark)) return fromUtf8(bytes.substr(kUtf8Mark.size()));
  return isUtf8(bytes) ? fromUtf8(bytes) : fromWindows1252(bytes);
}

}  // namespace text
