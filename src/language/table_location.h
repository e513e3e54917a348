// How lists name a cell of a drawing: a location that finds the table, and the cell in it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProDwgtable.h"

namespace language {

// Which tables are meant: by a cell's text, "row::column::pattern", or by the table's place, "x!!y" or
// "x!!y!!tolerance" in the drawing's coordinates.
struct TableLocation {
  bool byText = false;
  int row = 0, column = 0;
  std::wstring pattern;
  creo::ProPoint place;
  double tolerance = 5.0;  // strict, on each axis
};
// Nothing, with its error line, for another number of fields and for a field that isn't wholly a number; an empty one
// is 0.
std::optional<TableLocation> parseTableLocation(std::wstring_view text);

// "row:column" or "row:column:line". A missing number is 0.
struct TableCell {
  int row = 0, column = 0, line = 0;
};
// Nothing, with its error line, where row or column is 0 or a field isn't wholly a number.
std::optional<TableCell> parseTableCell(std::wstring_view text);

// The lines of a cell as ProDwgtableCelltextGet gives them; none where it has no text, which Creo takes for a failure.
creo::Got<std::vector<std::wstring>> cellLines(const creo::ProDwgtable& table, int column, int row,
                                               creo::ProDwgtableText mode);

struct LocatedTable {
  creo::ProDwgtable table;
  std::optional<int> sheet;  // none: Creo doesn't say
};
// The drawing's tables that fit, in its order, each looked at when the one before has been taken. onlyCurrentSheet:
// those of other sheets are passed over. take: false ends the walk. False, without a line: the tables can't be read, as
// those of another model.
bool walkTables(creo::ProMdl drawing, const TableLocation& location, bool onlyCurrentSheet,
                creo::FunctionRef<bool(const LocatedTable& table)> take);

}  // namespace language
