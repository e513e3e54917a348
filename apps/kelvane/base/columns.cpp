#include "kelvane/base/columns.h"

#include <algorithm>

#include "kelvane/base/display_width.h"
#include "kelvane/base/escapes.h"
#include "text/encoding.h"

namespace kelvane {

std::vector<std::string> aligned(std::vector<std::vector<std::string>> rows) {
  for (auto& row : rows)
    for (std::string& cell : row) cell = withEscapes(cell);
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], displayWidth(text::fromUtf8(row[i])));
  }
  std::vector<std::string> lines;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i] + std::string(widths[i] - displayWidth(text::fromUtf8(row[i])) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace kelvane
