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

// "silent", "left", both; nothing: silent alone.
std::set<Verdict> excusedOf(const std::string& written, const std::string& line) {
  std::set<Verdict> excused;
  std::istringstream words(written);
  for (std::string word; words >> word;) {
    if (word != wordOf(Verdict::silent) && word != wordOf(Verdict::left))
      throw std::runtime_error("silences.txt: nothing excuses '" + word + "': " + line);
    excused.insert(word == wordOf(Verdict::left) ? Verdict::left : Verdict::silent);
  }
  if (excused.empty()) excused.insert(Verdict::silent);
  return excused;
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
    if (fields.size() != 6 || fields.back().empty()) throw std::runtime_error("silences.txt: no whole row: " + line);
    rows.push_back({fields[0], fields[1], fields[2], fields[3], excusedOf(fields[4], line), fields[5]});
  }
  return rows;
}

Silence* silenceOf(std::vector<Silence>& rows, const Finding& finding, const std::string& caller) {
  for (Silence& row : rows)
    if (row.excused.contains(finding.judgement.verdict) && fits(row.action, finding.place.action) &&
        fits(row.operation, finding.place.operation) && fits(row.code, std::to_string(finding.code)) &&
        fits(row.caller, caller))
      return &row;
  return nullptr;
}

}  // namespace sweep
