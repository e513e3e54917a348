// Tables on the sheets of drawings, as actions find them.
#pragma once

#include <optional>

#include "actions/drawing/sheet_entries.h"
#include "creo/ProDwgtable.h"

namespace actions {

// The segment of a table by which it is placed: the first, or -1 where Creo knows a table's only one by that number.
struct PlacedSegment {
  int number = 0;
  creo::Got<int> sheet = creo::ProNotFound;
};
PlacedSegment placedSegment(const creo::ProDwgtable& table);

// How an entry finds tables: by their place (`posx_N`, `posy_N`), by a text in their cells (`text_N` in `textc_N`,
// `textr_N`), or by either. Made for one sheet, whose coordinates the place is in.
class TableFinder {
 public:
  TableFinder(const Task& task, const SheetEntry& entry, const SheetFrame& frame);
  // Looks for nothing: no table can be found.
  [[nodiscard]] bool isIdle() const { return !place_ && text_.empty(); }
  [[nodiscard]] bool finds(const creo::ProDwgtable& table, const PlacedSegment& segment) const;

 private:
  [[nodiscard]] bool standsThere(const creo::ProPoint& stored) const;
  [[nodiscard]] bool holdsText(const creo::ProDwgtable& table) const;
  [[nodiscard]] bool cellHoldsText(const creo::ProDwgtable& table, int column, int row) const;

  SheetFrame frame_;
  std::optional<creo::ProPoint> place_;  // on the sheet
  std::wstring_view text_;               // a pattern; empty: no search by text
  std::optional<int> column_, row_;      // nothing: all
};

}  // namespace actions
