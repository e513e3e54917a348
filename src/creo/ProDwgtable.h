// Tables of drawings. Columns and rows count from 1, segments from 0.
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
// Below: ProNotFound for a table, segment or cell that isn't there. A segment of -1 stands for a table's only one.
Got<int> ProDwgtableSegCount(const ProDwgtable& table);
Got<int> ProDwgtableSegSheetGet(const ProDwgtable& table, int segment);
// Where the segment stands, in the drawing's own coordinates.
Got<ProPoint> ProDwgtableInfoGet(const ProDwgtable& table, int segment);
Got<int> ProDwgtableColumnsCount(const ProDwgtable& table);
Got<int> ProDwgtableRowsCount(const ProDwgtable& table);
// The lines of a cell; an empty cell has none.
Got<std::vector<std::wstring>> ProDwgtableCelltextGet(const ProDwgtable& table, int column, int row,
                                                      ProDwgtableText mode);
// Does the table come from the sheet's format?
Got<bool> ProDwgtableIsFromFormat(const ProDwgtable& table);
// The numbers of the models that the table's repeat regions refer to, as in "&model_name:2"; each once.
Got<std::vector<int>> ProDwgtableRegionModelsGet(const ProDwgtable& table);

// A table of empty cells on the current sheet; widths and heights in the drawing's units.
Got<ProDwgtable> ProDrawingTableCreate(ProMdl drawing, const ProPoint& position, const std::vector<double>& columns,
                                       const std::vector<double>& rows);
ProError ProDwgtableTextEnter(const ProDwgtable& table, int column, int row, const std::vector<std::wstring>& lines);
ProError ProDwgtableDelete(const ProDwgtable& table, bool repaint);

}  // namespace creo
