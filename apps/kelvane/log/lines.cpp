#include "kelvane/log/lines.h"

#include <map>

#include "text/pieces.h"

namespace kelvane {
namespace {

// Trouble has no indent of its own: it hangs below the step that it came from.
bool isTrouble(int level) { return level == 1 || level == 2 || level == 3 || level == 8; }

}  // namespace

std::vector<LogLine> logLines(std::wstring_view content) {
  std::vector<LogLine> lines;
  std::size_t last = 0;  // depth of the last step
  for (const std::wstring& line : text::lines(content)) {
    if (line.empty() || line[0] < L'0' || line[0] > L'9') continue;
    LogLine taken;
    taken.level = line[0] - L'0';
    const std::wstring_view rest = std::wstring_view(line).substr(1);
    const std::size_t blanks = std::min(rest.find_first_not_of(L' '), rest.size());
    taken.text = rest.substr(blanks);
    if (isTrouble(taken.level)) {
      taken.depth = last + 1;
    } else {
      // One blank parts the level from the text, then two stand for each level of the tree.
      taken.depth = last = blanks / 2;
    }
    lines.push_back(std::move(taken));
  }
  return lines;
}

std::vector<RepeatedLine> takenTogether(const std::vector<LogLine>& lines) {
  std::vector<RepeatedLine> result;
  std::map<std::pair<int, std::wstring_view>, std::size_t> places;
  for (const LogLine& line : lines) {
    const auto [known, isNew] = places.try_emplace({line.level, line.text}, result.size());
    if (isNew) {
      result.push_back({line});
    } else {
      ++result[known->second].count;
    }
  }
  return result;
}

bool isShown(const LogLine& line, int level) {
  switch (level) {
    case 8:
      return true;
    case 2:
      return line.level == 2 || line.level == 9;
    case 1:
      return line.level == 1 || line.level == 2 || line.level == 9;
    default:
      return line.level != 8;
  }
}

}  // namespace kelvane
