#include "reports/sheet/fitting.h"

#include "text/code_points.h"

namespace reports::sheet {
namespace {

constexpr std::wstring_view kEllipsis = L"\u2026", kBreakBehind = L"\\/-_;";
constexpr char32_t kFirstPrintable = 0x20, kDelete = 0x7F, kLastControl = 0x9F, kLastOfBasicPlane = 0xFFFF;

bool isControl(char32_t code) { return code < kFirstPrintable || (code >= kDelete && code <= kLastControl); }

// Where the line that begins at `begin` ends: behind its last character that fits.
std::size_t lineEnd(std::wstring_view text, std::size_t begin, double width, Advance advance) {
  double used = 0;
  std::size_t end = begin;
  while (end < text.size() && (end == begin || used + advance(text[end]) <= width)) used += advance(text[end++]);
  return end;
}

// Back to the last place of a line where it may be broken; the line itself where there is none.
std::size_t breakBefore(std::wstring_view text, std::size_t begin, std::size_t end) {
  if (text[end] == L' ') return end;
  for (std::size_t at = end; at > begin + 1; --at) {
    if (text[at - 1] == L' ' && text.substr(begin, at - begin).find_first_not_of(L' ') != text.npos) return at;
    if (kBreakBehind.find(text[at - 1]) != kBreakBehind.npos) return at;
  }
  return end;
}

std::wstring_view withoutBlanksBehind(std::wstring_view line) {
  return line.substr(0, line.find_last_not_of(L' ') + 1);
}

}  // namespace

std::wstring printable(std::wstring_view text) {
  std::wstring out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const text::CodePoint point = text::codePointAt(text, i);
    i += point.length;
    const bool isShown = point.code <= kLastOfBasicPlane && !text::isSurrogate(point.code);
    out += isControl(point.code) ? L' ' : static_cast<wchar_t>(isShown ? point.code : text::kReplacement);
  }
  return out;
}

double widthOf(std::wstring_view text, Advance advance) {
  double width = 0;
  for (const wchar_t c : text) width += advance(c);
  return width;
}

std::vector<std::wstring> wrapped(std::wstring_view text, double width, Advance advance) {
  std::vector<std::wstring> lines;
  std::size_t begin = 0;
  do {
    std::size_t end = lineEnd(text, begin, width, advance);
    if (end < text.size()) end = breakBefore(text, begin, end);
    lines.emplace_back(withoutBlanksBehind(text.substr(begin, end - begin)));
    begin = text.find_first_not_of(L' ', end);
  } while (begin < text.size());
  return lines;
}

std::wstring cutTo(std::wstring_view text, double width, Advance advance) {
  if (widthOf(text, advance) <= width) return std::wstring(text);
  const std::size_t end = lineEnd(text, 0, width - widthOf(kEllipsis, advance), advance);
  return std::wstring(withoutBlanksBehind(text.substr(0, end))) + std::wstring(kEllipsis);
}

}  // namespace reports::sheet
