#include "actions/drawing/table_finder.h"

#include "actions/drawing/details.h"
#include "language/compare.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {

using namespace language;
using creo::ProDwgtable;

namespace {

constexpr double kAbsentPlace = -10.0;
constexpr std::wstring_view kAll = L"*";

// False, with a line: neither a number nor all.
bool readCellNumber(const Task& task, std::wstring_view stem, int number, std::optional<int>& into) {
  const std::wstring name = text::format(L"%s%d", stem, number);
  const std::wstring_view value = task.attribute(name);
  if (value == kAll) return true;
  into = text::wholeInt(value);
  if (into) return true;
  failDetail(text::format(L"%s is neither a number nor *: %s", name, value));
  return false;
}

}  // namespace

PlacedSegment placedSegment(const ProDwgtable& table) {
  if (const auto count = creo::ProDwgtableSegCount(table); !count) return {0, count.error};  // it has gone
  PlacedSegment segment{0, creo::ProDwgtableSegSheetGet(table, 0)};
  if (!segment.sheet) segment = {-1, creo::ProDwgtableSegSheetGet(table, -1)};
  return segment;
}

TableFinder::TableFinder(const Task& task, const SheetEntry& entry, const SheetFrame& frame) : frame_(frame) {
  if (!task.numbered(L"posx_%d", entry.number).value_or(L"").empty())
    if (const auto given = placeOf(task, entry, L"posx_", L"posy_", SheetWork::finding, kAbsentPlace))
      place_ = fromEdges(frame, *given);
  const std::wstring_view text = task.numbered(L"text_%d", entry.number).value_or(L"");
  if (text.empty()) return;
  const bool column = readCellNumber(task, L"textc_", entry.number, column_);
  if (readCellNumber(task, L"textr_", entry.number, row_) && column) text_ = text;
}

bool TableFinder::finds(const ProDwgtable& table, const PlacedSegment& segment) const {
  const auto stored = creo::ProDwgtableInfoGet(table, segment.number);
  if (!stored) return false;
  const bool isThere = place_ && standsThere(stored.value);
  return (!text_.empty() && holdsText(table)) || isThere;
}

bool TableFinder::standsThere(const creo::ProPoint& stored) const {
  sayDetail(text::format(L"x: %f, y: %f", stored.x, stored.y));
  const creo::ProPoint place = toSheet(frame_, stored);
  sayDetail(text::format(L"recalc x: %f, y: %f", place.x, place.y));
  return isNear(place, *place_);
}

// Cells outside the table can't be read, and are passed over.
bool TableFinder::holdsText(const ProDwgtable& table) const {
  const auto columns = creo::ProDwgtableColumnsCount(table), rows = creo::ProDwgtableRowsCount(table);
  if (!columns || !rows) return false;
  bool found = false;
  for (int column = 0; column <= columns.value && !found; ++column) {
    if (column_ && *column_ != column) continue;
    for (int row = 0; row <= rows.value; ++row)
      if (!row_ || *row_ == row) found = cellHoldsText(table, column, row) || found;
  }
  return found;
}

bool TableFinder::cellHoldsText(const ProDwgtable& table, int column, int row) const {
  const auto lines = creo::ProDwgtableCelltextGet(table, column, row, creo::ProDwgtableText::displayed);
  if (!lines) return false;
  for (std::size_t i = 0; i < lines.value.size(); ++i) {
    if (!matches(text_, lines.value[i])) continue;
    sayDetail(text::format(L"y:%d, x:%d, lc:%d, %s", row, column, static_cast<int>(i), lines.value[i]));
    return true;
  }
  return false;
}

}  // namespace actions
