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

// The character that the text begins with: a code where it has two or three bytes, else 0. A byte that is none of UTF-8
// stands for itself.
struct Character {
  unsigned code = 0;
  std::size_t bytes = 1;
};
Character characterOf(std::string_view text) {
  const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const auto follow = [&](std::size_t count) {
    for (std::size_t i = 1; i <= count; ++i)
      if ((at(i) & 0xC0U) != 0x80U) return false;
    return true;
  };
  // What fits into fewer bytes is written in fewer.
  constexpr unsigned kFirstOfTwo = 0x80, kFirstOfThree = 0x800;
  const unsigned two = (at(0) & 0x1FU) << 6U | (at(1) & 0x3FU);
  const unsigned three = (at(0) & 0xFU) << 12U | (at(1) & 0x3FU) << 6U | (at(2) & 0x3FU);
  if ((at(0) & 0xE0U) == 0xC0U && follow(1) && two >= kFirstOfTwo) return {two, 2};
  if ((at(0) & 0xF0U) == 0xE0U && follow(2) && three >= kFirstOfThree) return {three, 3};
  if ((at(0) & 0xF8U) == 0xF0U && follow(3)) return {0, 4};
  return {at(0), 1};
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
  while (!text.empty()) {
    const Character c = characterOf(text);
    // U+0080 to U+009F some terminals obey, and bytes of these values, too.
    if (c.code >= 0x80 && c.code < 0xA0)
      result += start + hex(c.code);
    else if (isUnseen(c.code))
      result += "\\u" + hex(c.code >> 8U) + hex(c.code & 0xFFU);
    else if (c.bytes == 1 && ((c.code < 0x20 && kept.find(text[0]) == kept.npos) || c.code == 0x7F))
      result += ofControl(static_cast<unsigned char>(text[0]), start);
    else
      result += text.substr(0, c.bytes);
    text.remove_prefix(c.bytes);
  }
  return result;
}

}  // namespace

std::string withEscapes(std::string_view text) { return escapedBut(text, {}, kPlainStart); }
std::string escapedLines(std::string_view text) { return escapedBut(text, "\n\t", kPlainStart); }
std::string escapedJson(std::string_view text) { return escapedBut(text, "\n", kJsonStart); }

}  // namespace kelvane
