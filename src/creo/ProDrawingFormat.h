// The formats on the sheets of drawings. No drawing stands for the current one, a sheet below 1 for its current sheet;
// ProBadInputs, here and below: no such sheet.
#pragma once

#include "creo/ProDrawing.h"

namespace creo {

// Is the format of the sheet hidden? False for a sheet without one.
Got<bool> ProDrawingSheetFormatIsBlanked(ProMdl drawing, int sheet);
// ProGeneralError: the drawing is read-only.
ProError ProDrawingSheetFormatShow(ProMdl drawing, int sheet);
ProError ProDrawingSheetFormatHide(ProMdl drawing, int sheet);
// Gives the sheet a sheet of a format, or of another drawing, as its format: its size, what is drawn on it, and copies
// of its tables, whose texts are about the drawing's model `solid` (none: the current one). Tables of the former format
// that weren't deleted before are the drawing's own from now on. source: a format or a drawing; sourceSheet: from 1,
// below it the first. ProBadInputs: neither, or no model of the drawing; ProNotFound: a sheet that source lacks.
ProError ProDrawingFormatAdd(ProMdl drawing, int sheet, ProMdl solid, ProMdl source, int sourceSheet);

}  // namespace creo
