#include "engine/table_location.h"

#include "core/log.h"
#include "engine/compare.h"
#include "text/numbers.h"
#include "text/pieces.h"
#include "text/units.h"

namespace engine {
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

std::optional<int> sheetOf(const creo::ProDwgtable& table) {
  auto sheet = creo::ProDwgtableSegSheetGet(table, 0);
  if (!sheet) sheet = creo::ProDwgtableSegSheetGet(table, -1);
  return sheet ? std::optional(sheet.value) : std::nullopt;
}

bool hasText(const creo::ProDwgtable& table, const TableLocation& location) {
  core::logIndented(L"Found a table with colon separated", core::kNormal, 1);
  const auto lines =
      creo::ProDwgtableCelltextGet(table, location.column, location.row, creo::ProDwgtableText::displayed);
  if (!lines) return false;
  const std::wstring joined = text::join(lines.value, L"");
  return wildcardCompare(location.pattern, text::cut(joined, kCellTextSize)) == 1;
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
    location.byText = true;
    location.row = text::parseInt(byText[0]);
    location.column = text::parseInt(byText[1]);
    location.pattern = byText[2];
    return location;
  }
  if (byPlace.size() != 2 && byPlace.size() != 3) {
    core::logWrite(L"Can't parse line", core::kError);
    return std::nullopt;
  }
  location.place = {text::parseDouble(byPlace[0]), text::parseDouble(byPlace[1])};
  if (byPlace.size() == 3) location.tolerance = text::parseDouble(byPlace[2]);
  return location;
}

std::optional<TableCell> parseTableCell(std::wstring_view text) {
  const auto fields = fieldsOf(text, L":");
  const auto number = [&](std::size_t i) { return i < fields.size() ? text::parseInt(fields[i]) : 0; };
  const TableCell cell{number(0), number(1), number(2)};
  if (cell.row != 0 && cell.column != 0) return cell;
  core::logWrite(L"Can't parse cellcol or cellrow", core::kError);
  return std::nullopt;
}

void walkTables(creo::ProMdl drawing, const TableLocation& location, bool onlyCurrentSheet,
                creo::FunctionRef<bool(const LocatedTable& table)> take) {
  if (location.byText && (location.row == 0 || location.column == 0)) {
    core::logWrite(L"Row and/or Col can't be 0", core::kError);
    return;
  }
  const auto tables = creo::ProDrawingTablesCollect(drawing);
  if (!tables) return;
  const auto current = onlyCurrentSheet ? creo::ProDrawingCurrentSheetGet(drawing) : creo::Got<int>(creo::ProNotFound);
  if (onlyCurrentSheet && !current) {
    core::logWrite(L"The current sheet can't be read, no table is taken", core::kError);
    return;
  }
  for (const creo::ProDwgtable& table : tables.value) {
    const auto sheet = sheetOf(table);
    if (onlyCurrentSheet && sheet && *sheet != current.value) continue;
    const bool fits = location.byText ? hasText(table, location) : liesAt(table, location);
    if (fits && !take({table, sheet})) return;
  }
}

}  // namespace engine
