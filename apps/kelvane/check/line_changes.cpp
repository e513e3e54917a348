#include "kelvane/check/line_changes.h"

#include <algorithm>

namespace kelvane {
namespace {

constexpr std::size_t kAround = 3;  // lines

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string with(char sign, std::string_view line) { return std::string(1, sign).append(line); }

}  // namespace

std::vector<std::string> changedLines(std::string_view before, std::string_view after) {
  const std::vector<std::string_view> a = linesOf(before), b = linesOf(after);
  const std::size_t count = std::min(a.size(), b.size());
  // The next line from there on that differs; count where there is none.
  const auto changeFrom = [&](std::size_t i) {
    while (i < count && a[i] == b[i]) ++i;
    return i;
  };
  std::vector<std::string> shown;
  for (std::size_t change = changeFrom(0); change < count;) {
    const std::size_t begin = change - std::min(change, kAround);
    std::size_t end = change + 1, next = changeFrom(end);
    for (; next < count && next - end <= 2 * kAround; next = changeFrom(end)) end = next + 1;
    end = std::min(end + kAround, count);
    const std::string place = std::to_string(begin + 1) + "," + std::to_string(end - begin);
    shown.push_back(std::string("@@ -").append(place).append(" +").append(place).append(" @@"));
    for (std::size_t i = begin; i < end;) {
      if (a[i] == b[i]) {
        shown.push_back(with(' ', a[i++]));
        continue;
      }
      const std::size_t from = i;
      while (i < end && a[i] != b[i]) shown.push_back(with('-', a[i++]));
      for (std::size_t j = from; j < i; ++j) shown.push_back(with('+', b[j]));
    }
    change = next;
  }
  return shown;
}

}  // namespace kelvane
