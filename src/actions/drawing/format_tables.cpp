#include "actions/drawing/format_tables.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "actions/drawing/table_finder.h"
#include "actions/visits.h"
#include "core/log.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "language/table_location.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace actions {
namespace {

using creo::ProDwgtable;
using creo::ProPoint;

constexpr std::wstring_view kBetween = L"!!";

void debug(std::wstring_view text) { core::logWrite(text, core::kDebug); }
void say(std::wstring_view text) { core::logIndented(text, core::kNormal, 2); }

// False: the text isn't wholly a number.
bool readNumber(std::wstring_view text, double& into) {
  const auto number = text::wholeDouble(text);
  into = number.value_or(0);
  return number.has_value();
}

bool readNumber(std::wstring_view text, int& into) {
  const auto number = text::wholeInt(text);
  into = number.value_or(0);
  return number.has_value();
}

std::optional<FormatTableRule> cellRule(std::wstring_view text, std::size_t first) {
  const std::size_t second = text.find(kBetween, first + kBetween.size());
  if (second == text.npos) return std::nullopt;
  FormatTableRule rule;
  rule.isCell = true;
  const std::size_t column = first + kBetween.size();
  if (!readNumber(text.substr(0, first), rule.row)) return std::nullopt;
  if (!readNumber(text.substr(column, second - column), rule.column)) return std::nullopt;
  rule.pattern = text.substr(second + kBetween.size());
  return rule;
}

std::optional<FormatTableRule> placeRule(std::wstring_view text) {
  const std::vector<std::wstring> parts = text::split(text, L':');
  FormatTableRule rule;
  if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
  if (!readNumber(parts[0], rule.x) || !readNumber(parts[1], rule.y)) return std::nullopt;
  if (parts.size() == 3 && !readNumber(parts[2], rule.tolerance)) return std::nullopt;
  return rule;
}

// A cell without a text says nothing, which is a line too; one that isn't there fits no rule.
bool cellFits(const ProDwgtable& table, const FormatTableRule& rule) {
  for (const auto mode : {creo::ProDwgtableText::displayed, creo::ProDwgtableText::symbolic}) {
    auto lines = language::cellLines(table, rule.column, rule.row, mode);
    if (!lines) return false;
    if (lines.value.empty()) lines.value.emplace_back();
    for (const std::wstring& line : lines.value)
      if (!language::matches(rule.pattern, line)) return false;
  }
  return true;
}

bool isAbout(const FormatTableRule& rule, const ProDwgtable& table, const ProPoint& place) {
  if (rule.isCell) return cellFits(table, rule);
  return std::fabs(place.x - rule.x) <= rule.tolerance && std::fabs(place.y - rule.y) <= rule.tolerance;
}

// Also where the rule's pattern was given up: a table that may be the one to keep isn't deleted.
bool mayBeAbout(const FormatTableRule& rule, const ProDwgtable& table, const ProPoint& place) {
  const language::GivenUp givenUp;
  return isAbout(rule, table, place) || givenUp.any();
}

struct FormatTable {
  ProDwgtable table;
  ProPoint place;
};
// The sheet's tables that come from its format; one whose place can't be read is left alone, with a line.
std::vector<FormatTable> formatTables(creo::ProMdl drawing, int sheet) {
  std::vector<FormatTable> found;
  const creo::ProError visited = creo::ProDrawingTableVisit(drawing, [&](const ProDwgtable& table) {
    debug(L"table found");
    const PlacedSegment segment = placedSegment(table);
    if (!segment.sheet || segment.sheet.value != sheet) return creo::ProNoError;
    debug(L"on same side");
    const auto fromFormat = creo::ProDwgtableIsFromFormat(table);
    if (!fromFormat) cantRead(L"Where a table comes from");
    if (!fromFormat || !fromFormat.value) return creo::ProNoError;
    debug(L"from format");
    if (const auto place = creo::ProDwgtableInfoGet(table, segment.number))
      found.push_back({table, place.value});
    else
      cantRead(L"The place of a table");
    return creo::ProNoError;
  });
  isWhole(visited, L"The tables of the format");
  return found;
}

// "x => 10 = 12 ; y => 5 = 5": where the table stands, and the rule's place, or its column and row.
std::wstring compared(const FormatTableRule& rule, const ProPoint& place) {
  const double x = rule.isCell ? rule.column : rule.x, y = rule.isCell ? rule.row : rule.y;
  return text::format(L"x => %f = %f ; y => %f = %f", place.x, x, place.y, y);
}

void remove(const ProDwgtable& table) {
  if (creo::ProDwgtableDelete(table, false) != creo::ProNoError)
    core::logWrite(L"Can't delete the table", core::kError);
}

}  // namespace

std::optional<FormatTableRule> formatTableRule(std::wstring_view text) {
  const std::size_t cell = text.find(kBetween);
  return cell == text.npos ? placeRule(text) : cellRule(text, cell);
}

void deleteFormatTables(creo::ProMdl drawing, int sheet, const std::optional<FormatTableRule>& rule) {
  for (const FormatTable& entry : formatTables(drawing, sheet)) {
    if (!rule) {
      say(text::format(L"delete table found with x => %f ; y => %f", entry.place.x, entry.place.y));
      remove(entry.table);
    } else if (mayBeAbout(*rule, entry.table, entry.place)) {
      say(text::format(L"table found with %s (not deleted)", compared(*rule, entry.place)));
    } else {
      say(text::format(L"delete table found with %s", compared(*rule, entry.place)));
      remove(entry.table);
    }
  }
}

void deleteRepeatedTables(creo::ProMdl drawing, int sheet, const std::optional<FormatTableRule>& rule) {
  if (!rule) return;
  for (const FormatTable& entry : formatTables(drawing, sheet))
    if (isAbout(*rule, entry.table, entry.place)) remove(entry.table);
}

}  // namespace actions
