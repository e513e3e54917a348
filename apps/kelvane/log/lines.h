// The lines of a log file, taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

struct LogLine {
  int level = 0;          // 0 normal, 1 warning, 2 error, 3 filter note, 8 debug, 9 title
  std::size_t depth = 0;  // in the tree
  std::wstring text;      // without level and indent; warnings and errors keep "(WAR) B2 ..."
};

// Lines that don't begin with a level belong to no tree and are left out.
std::vector<LogLine> logLines(std::wstring_view content);
// Equal lines are of one action on one model, as they name both: one cause that was met several times.
struct RepeatedLine {
  LogLine line;
  int count = 1;
};
// In the order of their first ones.
std::vector<RepeatedLine> takenTogether(const std::vector<LogLine>& lines);

// Whether the line stands in a view of that level: 0 all but debug lines, 1 warnings and errors, 2 errors, 8 all; the
// titles of a run always do.
bool isShown(const LogLine& line, int level);

}  // namespace kelvane
