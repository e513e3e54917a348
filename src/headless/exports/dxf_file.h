// Sheets as a drawing of the exchange format DXF, release 12 (AC1009).
#pragma once

#include <span>
#include <string>

#include "headless/pictures/sheet_picture.h"

namespace headless {

// The file's bytes, ASCII alone. The sheets stand side by side from the origin, in the unit of the first one (mm or
// inches); lines of the thinnest pen are lines, thicker ones have their width; each kind of thing has its layer;
// letters beyond ASCII are written as \U+XXXX.
std::string dxfOf(std::span<const SheetPicture> sheets);

}  // namespace headless
