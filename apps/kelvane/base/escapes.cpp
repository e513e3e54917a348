#include "kelvane/base/escapes.h"

#include <algorithm>
#include <iterator>

namespace kelvane {
namespace {

std::string hex(unsigned value) {
  constexpr const char* kDigits = "0123456789abcdef";
  return {kDigits[value >> 4U], kDigits[value & 15U]};
}

// What a terminal or a page shows otherwise than it stands there: marks that turn the direction of writing, separators
// of lines, and what takes no room. All lie below U+10000. Joiners belong to the writing of some languages and stay.
struct Range {
  unsigned first, last;
};
constexpr Range kUnseen[] = {{0x61C, 0x61C},   {0x180E, 0x180E}, {0x200B, 0x200B}, {0x200E, 0x200F},
                             {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}};

// The character of two or three bytes that the text begins with, and its bytes; 0 for any other.
struct Character {
  unsigned code = 0;
  std::size_t bytes = 0;
};
Character shortCharacter(std::string_view text) {
  const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const auto follows = [&](std::size_t i) { return (at(i) & 0xC0U) == 0x80U; };
  if ((at(0) & 0xE0U) == 0xC0U && follows(1)) return {(at(0) & 0x1FU) << 6U | (at(1) & 0x3FU), 2};
  if ((at(0) & 0xF0U) == 0xE0U && follows(1) && follows(2))
    return {(at(0) & 0xFU) << 12U | (at(1) & 0x3FU) << 6U | (at(2) & 0x3FU), 3};
  return {};
}
bool isUnseen(unsigned code) {
  return std::any_of(std::begin(kUnseen), std::end(kUnseen),
                     [&](const Range& range) { return range.first <= code && code <= range.last; });
}

constexpr const char* kPlainStart = "\\x";
constexpr const char* kJsonStart = "\\u00";

std::string ofControl(unsigned char c, const char* start) {
  switch (c) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return start + hex(c);
  }
}

std::string escapedBut(std::string_view text, std::string_view kept, const char* start) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const Character wide = c < 0x80 ? Character() : shortCharacter(text.substr(i));
    // U+0080 to U+009F some terminals obey.
    if (wide.code >= 0x80 && wide.code < 0xA0) {
      result += start + hex(wide.code);
      i += wide.bytes - 1;
    } else if (isUnseen(wide.code)) {
      result += "\\u" + hex(wide.code >> 8U) + hex(wide.code & 0xFFU);
      i += wide.bytes - 1;
    } else if ((c < 0x20 && kept.find(text[i]) == kept.npos) || c == 0x7F) {
      result += ofControl(c, start);
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace

std::string withEscapes(std::string_view text) { return escapedBut(text, {}, kPlainStart); }
std::string escapedLines(std::string_view text) { return escapedBut(text, "\n\t", kPlainStart); }
std::string escapedJson(std::string_view text) { return escapedBut(text, "\n", kJsonStart); }

}  // namespace kelvane
