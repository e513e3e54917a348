// Tables of drawings. Columns and rows count from 1, segments from 0; places are the drawing's own coordinates.
#pragma once

#include "creo/ProDrawing.h"

namespace creo {

struct ProDwgtable {
  ProMdl drawing;
  int id = 0;
};
// displayed: as the sheet shows it, "&" forms replaced; symbolic: as it was entered.
enum class ProDwgtableText : int { displayed = 1, symbolic = 2 };

ProError ProDrawingTableVisit(ProMdl drawing, Visitor<ProDwgtable> visitor);
// ProNotFound: the drawing has no table.
Got<std::vector<ProDwgtable>> ProDrawingTablesCollect(ProMdl drawing);
// Below: ProNotFound for a table, segment or cell that isn't there, and for -1 as segment where a table has several: it
// stands for a table's only one.
Got<int> ProDwgtableSegCount(const ProDwgtable& table);
Got<int> ProDwgtableSegSheetGet(const ProDwgtable& table, int segment);
// Where the segment stands by its upper left corner.
Got<ProPoint> ProDwgtableInfoGet(const ProDwgtable& table, int segment);
Got<int> ProDwgtableColumnsCount(const ProDwgtable& table);
Got<int> ProDwgtableRowsCount(const ProDwgtable& table);
// The lines of a cell. ProGeneralError: it has no text.
Got<std::vector<std::wstring>> ProDwgtableCelltextGet(const ProDwgtable& table, int column, int row,
                                                      ProDwgtableText mode);
// Does the table come from the sheet's format?
Got<bool> ProDwgtableIsFromFormat(const ProDwgtable& table);
// The numbers of the models that the table's repeat regions refer to, as in "&model_name:2"; each once.
Got<std::vector<int>> ProDwgtableRegionModelsGet(const ProDwgtable& table);

// A table of empty cells on the current sheet. position: of its upper left corner; widths and heights in the drawing's
// own coordinates, at most 50 columns. ProGeneralError: the drawing is read-only.
Got<ProDwgtable> ProDrawingTableCreate(ProMdl drawing, const ProPoint& position, const std::vector<double>& columns,
                                       const std::vector<double>& rows);
// A line that is too wide for its cell runs over the neighbours.
ProError ProDwgtableTextEnter(const ProDwgtable& table, int column, int row, const std::vector<std::wstring>& lines);
// Creo passes repaint over.
ProError ProDwgtableDelete(const ProDwgtable& table, bool repaint);

constexpr int kAnyTableVersion = 0;
// Brings a stored table, "NAME.tbl", onto the current sheet; it shows the drawing's own models. name: without its
// ending. folder: counts from the working folder, which an empty one is. origin: of its upper left corner. ProNotFound:
// no such file or version; ProBadInputs: no name of a file; ProGeneralError: unreadable, the message area says file,
// line and reason.
Got<ProDwgtable> ProDwgtableRetrieve(ProMdl drawing, const std::wstring& name, const std::wstring& folder, int version,
                                     const ProPoint& origin);
// Moves a segment on its sheet. place: of its origin. ProBadInputs: no place.
ProError ProDwgtableSegMove(const ProDwgtable& table, int segment, const ProPoint& place, bool repaint);
// Draws the table on the screen again, or takes it off the screen until the drawing is repainted or regenerated; it
// stays in the drawing.
ProError ProDwgtableDisplay(const ProDwgtable& table);
ProError ProDwgtableErase(const ProDwgtable& table);
// Brings the repeat regions of all tables up to date. The drawing must be displayed in the current window, and not be
// read-only: else ProGeneralError.
ProError ProDrawingTablesUpdate(ProMdl drawing);

// What is scaled by the inverse, then moved by it, is where it was. The scales aren't 0.
constexpr ProSheetMatrix inverseOf(const ProSheetMatrix& m) {
  return {1 / m.scaleX, 1 / m.scaleY, -m.offsetX / m.scaleX, -m.offsetY / m.scaleY};
}
// Where a matrix brings a point. ProBadInputs: nowhere, as a number is beyond all bounds.
Got<ProPoint> ProPntTrfEval(const ProPoint& point, const ProSheetMatrix& matrix);

}  // namespace creo
