// Sheets as a drawing of the exchange format DXF, release 2007 (AC1021), the first whose texts are Unicode.
#pragma once

#include <span>
#include <string>

#include "headless/pictures/sheet_picture.h"

namespace headless {

// The file's bytes, in UTF-8. The sheets stand side by side from the origin, in the unit of the first one (mm or
// inches). Circles, arcs and ellipses stay what they are, chains of lines are polylines. Lines of views lie on the
// layers VISIBLE, HIDDEN and CENTER, which have their pens and line types, in lengths of the sheet; each other kind of
// thing has its layer. Strokes of another width than a pen's are polylines with their width.
std::string dxfOf(std::span<const SheetPicture> sheets);

}  // namespace headless
