#include "language/table_location.h"

#include "core/log.h"
#include "language/compare.h"
#include "text/numbers.h"
#include "text/pieces.h"
#include "text/units.h"

namespace language {
namespace {

constexpr std::size_t kCellTextSize = 780;  // of a cell's lines, one behind the other

std::vector<std::wstring_view> fieldsOf(std::wstring_view text, std::wstring_view separator) {
  std::vector<std::wstring_view> fields;
  for (std::size_t end = text.find(separator); end != text.npos; end = text.find(separator)) {
    fields.push_back(text.substr(0, end));
    text.remove_prefix(end + separator.size());
  }
  fields.push_back(text);
  return fields;
}

// A field's number as a whole, 0 for an empty one: the 2 of "2,5" would name another cell or table.
std::optional<int> integerField(std::wstring_view field) {
  return text::trimmed(field).empty() ? 0 : text::wholeInt(field);
}
std::optional<double> numberField(std::wstring_view field) {
  return text::trimmed(field).empty() ? 0 : text::wholeDouble(field);
}

std::optional<TableLocation> cantParse() {
  core::logWrite(L"Can't parse line", core::kError);
  return std::nullopt;
}

std::optional<int> sheetOf(const creo::ProDwgtable& table) {
  auto sheet = creo::ProDwgtableSegSheetGet(table, 0);
  if (!sheet) sheet = creo::ProDwgtableSegSheetGet(table, -1);
  return sheet ? std::optional(sheet.value) : std::nullopt;
}

bool hasText(const creo::ProDwgtable& table, const TableLocation& location) {
  core::logIndented(L"Found a table with colon separated", core::kNormal, 1);
  const auto lines = cellLines(table, location.column, location.row, creo::ProDwgtableText::displayed);
  if (!lines) return false;
  const std::wstring joined = text::join(lines.value, L"");
  return matches(location.pattern, text::cut(joined, kCellTextSize));
}

bool liesAt(const creo::ProDwgtable& table, const TableLocation& location) {
  core::logIndented(L"Found a table with ! separated", core::kNormal, 1);
  const auto origin = creo::ProDwgtableInfoGet(table, 0);
  const auto isNear = [&](double wanted, double at) {
    return wanted > at - location.tolerance && wanted < at + location.tolerance;
  };
  return origin && isNear(location.place.x, origin.value.x) && isNear(location.place.y, origin.value.y);
}

}  // namespace

std::optional<TableLocation> parseTableLocation(std::wstring_view text) {
  TableLocation location;
  const auto byText = fieldsOf(text::cut(text, text::kTextSize - 1), L"::");
  const auto byPlace = fieldsOf(text::cut(text, text::kTextSize - 1), L"!!");
  if (byText.size() == 3) {
    const auto row = integerField(byText[0]), column = integerField(byText[1]);
    if (!row || !column) return cantParse();
    location.byText = true;
    location.row = *row;
    location.column = *column;
    location.pattern = byText[2];
    return location;
  }
  if (byPlace.size() != 2 && byPlace.size() != 3) return cantParse();
  const auto x = numberField(byPlace[0]), y = numberField(byPlace[1]);
  const auto tolerance = byPlace.size() == 3 ? numberField(byPlace[2]) : location.tolerance;
  if (!x || !y || !tolerance) return cantParse();
  location.place = {*x, *y};
  location.tolerance = *tolerance;
  return location;
}

std::optional<TableCell> parseTableCell(std::wstring_view text) {
  const auto fields = fieldsOf(text, L":");
  const auto number = [&](std::size_t i) { return i < fields.size() ? integerField(fields[i]) : 0; };
  const auto row = number(0), column = number(1), line = number(2);
  if (row && column && line && *row != 0 && *column != 0) return TableCell{*row, *column, *line};
  core::logWrite(L"Can't parse cellcol or cellrow", core::kError);
  return std::nullopt;
}

creo::Got<std::vector<std::wstring>> cellLines(const creo::ProDwgtable& table, int column, int row,
                                               creo::ProDwgtableText mode) {
  auto lines = creo::ProDwgtableCelltextGet(table, column, row, mode);
  if (lines.error == creo::ProGeneralError) return std::vector<std::wstring>();
  return lines;
}

bool walkTables(creo::ProMdl drawing, const TableLocation& location, bool onlyCurrentSheet,
                creo::FunctionRef<bool(const LocatedTable& table)> take) {
  if (location.byText && (location.row == 0 || location.column == 0)) {
    core::logWrite(L"Row and/or Col can't be 0", core::kError);
    return true;
  }
  const auto tables = creo::ProDrawingTablesCollect(drawing);
  if (!tables) return creo::isTold(tables);
  const auto current = onlyCurrentSheet ? creo::ProDrawingCurrentSheetGet(drawing) : creo::Got<int>(creo::ProNotFound);
  if (onlyCurrentSheet && !current) {
    core::logWrite(L"The current sheet can't be read, no table is taken", core::kError);
    return true;
  }
  for (const creo::ProDwgtable& table : tables.value) {
    const auto sheet = sheetOf(table);
    if (onlyCurrentSheet && sheet && *sheet != current.value) continue;
    const bool fits = location.byText ? hasText(table, location) : liesAt(table, location);
    if (fits && !take({table, sheet})) break;
  }
  return true;
}

}  // namespace language
