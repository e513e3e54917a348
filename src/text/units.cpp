#include "text/units.h"

#include "text/code_points.h"

namespace text {
namespace {

// Walks whole characters while they end at or before unit `most`; the index behind the last one and its unit.
struct Position {
  std::size_t index = 0;
  std::size_t unit = 0;
};
Position walk(std::wstring_view text, std::size_t most) {
  Position at;
  while (at.index < text.size()) {
    const CodePoint next = codePointAt(text, at.index);
    if (next.units > most - at.unit) break;
    at.index += next.length;
    at.unit += next.units;
  }
  return at;
}

}  // namespace

std::size_t units(std::wstring_view text) {
  std::size_t count = text.size();
  if constexpr (sizeof(wchar_t) > 2) {
    for (const wchar_t c : text) count += codeOf(c) > 0xFFFF ? 1 : 0;
  }
  return count;
}

std::wstring_view cut(std::wstring_view text, std::size_t most) {
  // No character takes more than two units, so that most texts are known to fit by their length alone; counting is
  // much faster than walking.
  if (text.size() <= most / 2 || units(text) <= most) return text;
  return text.substr(0, walk(text, most).index);
}

std::wstring_view slice(std::wstring_view text, std::size_t from, std::size_t to) {
  if (from >= to) return {};
  Position start = walk(text, from);
  if (start.unit < from && start.index < text.size()) {
    const CodePoint split = codePointAt(text, start.index);
    start.index += split.length;
    start.unit += split.units;
  }
  if (start.unit >= to) return {};
  return cut(text.substr(start.index), to - start.unit);
}

}  // namespace text
