#include "kelvane/base/escapes.h"

namespace kelvane {
namespace {

std::string hex(unsigned value) {
  constexpr const char* kDigits = "0123456789abcdef";
  return {kDigits[value >> 4U], kDigits[value & 15U]};
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
    const std::string_view rest = text.substr(i);
    // U+0080 to U+009F, which some terminals obey, and the two separators of lines.
    const bool isHigh = c == 0xC2 && rest.size() > 1 && static_cast<unsigned char>(rest[1]) < 0xA0;
    if (isHigh) {
      result += start + hex(static_cast<unsigned char>(text[++i]));
    } else if (rest.starts_with("\u2028") || rest.starts_with("\u2029")) {
      result += rest.starts_with("\u2028") ? "\\u2028" : "\\u2029";
      i += 2;
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
