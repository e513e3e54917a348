#include "sweep/silences.h"

#include <sstream>
#include <stdexcept>

#include "support/folders.h"
#include "support/world.h"

namespace sweep {
namespace {

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' '), last = text.find_last_not_of(" \r");
  return first == text.npos ? "" : text.substr(first, last - first + 1);
}

bool fits(std::string_view pattern, std::string_view text) {
  if (pattern.empty()) return text.empty();
  if (pattern.front() != '*')
    return !text.empty() && pattern.front() == text.front() && fits(pattern.substr(1), text.substr(1));
  for (std::size_t i = 0; i <= text.size(); ++i)
    if (fits(pattern.substr(1), text.substr(i))) return true;
  return false;
}

}  // namespace

std::vector<Silence> silences() {
  std::vector<Silence> rows;
  std::istringstream lines(test::readBytes(test::sourceFolder() + "/tests/sweep/silences.txt"));
  for (std::string line; std::getline(lines, line);) {
    if (trimmed(line).empty() || line.starts_with('#')) continue;
    std::vector<std::string> fields;
    std::istringstream parts(line);
    for (std::string part; std::getline(parts, part, '|');) fields.push_back(trimmed(part));
    if (fields.size() != 5 || fields.back().empty()) throw std::runtime_error("silences.txt: no whole row: " + line);
    rows.push_back({fields[0], fields[1], fields[2], fields[3], fields[4]});
  }
  return rows;
}

Silence* silenceOf(std::vector<Silence>& rows, const Place& place, int code, const std::string& caller) {
  for (Silence& row : rows)
    if (fits(row.action, place.action) && fits(row.operation, place.operation) &&
        fits(row.code, std::to_string(code)) && fits(row.caller, caller))
      return &row;
  return nullptr;
}

}  // namespace sweep
