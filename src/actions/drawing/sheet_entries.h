// The counted entries by which actions name places and sheets of a drawing: which of them concern a sheet, and what
// their positions mean there.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/task.h"
#include "creo/ProDrawing.h"

namespace actions {

// One number's entry. Which sheets it is for: those whose format fits the pattern `fn_N` and whose number `sheet_N` is.
struct SheetEntry {
  int number = 0;
  std::optional<std::wstring_view> format;  // empty: every format, and none
  std::optional<int> sheet;                 // nothing: all
  int written = 0;                          // the number in `sheet_N`, also -1; 0 where it is absent or empty
};
// How `sheet_N` is read: through the template engine or as it stands, and whether 0 is all sheets or none.
struct SheetNumbers {
  bool replaced = true, zeroIsAll = true;
};
// The entries that have one of the attributes, ascending; those whose sheet can't be told get an error line and are
// left out. Of `sheet_N` absent, empty and -1 are all sheets.
std::vector<SheetEntry> sheetEntries(const Task& task, std::initializer_list<std::wstring_view> stems,
                                     SheetNumbers sheets = {});

// adding tells more in the log, and takes an entry without `fn_N` for none.
enum class SheetWork { adding, finding };
// Whether the entry is for that sheet of the task's drawing.
bool isForSheet(const Task& task, const SheetEntry& entry, int sheet, SheetWork work);

// A sheet with the matrix that leads from the drawing's coordinates, in which Creo keeps places, to the sheet's own, in
// which users read them.
struct SheetFrame {
  creo::ProMdl drawing;
  int sheet = 0;
  creo::ProSheetMatrix matrix;
};
// How many sheets a drawing has; none, with an error line, where that can't be told.
int sheetCount(creo::ProMdl drawing);
// Nothing, with an error line, where the matrix can't be read.
std::optional<SheetFrame> sheetFrame(creo::ProMdl drawing, int sheet);
creo::ProPoint toDrawing(const SheetFrame& frame, const creo::ProPoint& onSheet);
creo::ProPoint toSheet(const SheetFrame& frame, const creo::ProPoint& inDrawing);
// Negative values count from the far edges; they stay as they are, with an error line, where Creo doesn't tell the
// sheet's size.
creo::ProPoint fromEdges(const SheetFrame& frame, creo::ProPoint onSheet);
// Within 5 units of the sheet on each axis, bounds included.
bool isNear(const creo::ProPoint& a, const creo::ProPoint& b);

// The attributes `xstem` and `ystem` with the entry's number. Nothing, with an error line, where one is no number: of
// finding, where it isn't one as a whole, as it chooses what is deleted or moved. Absent or empty it is what an absent
// one counts as, where there is such a value.
std::optional<creo::ProPoint> placeOf(const Task& task, const SheetEntry& entry, std::wstring_view xStem,
                                      std::wstring_view yStem, SheetWork work, std::optional<double> absent = {});

}  // namespace actions
