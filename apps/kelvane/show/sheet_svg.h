// Sheets as an SVG picture.
#pragma once

#include <span>
#include <string>

#include "headless/pictures/sheet_picture.h"

namespace kelvane {

// The sheets, at least one, one below another: border, and all that stands on each in its place and width. A viewer
// shows it in its true size, or smaller where its window is.
std::string sheetSvg(std::span<const headless::SheetPicture> sheets);

}  // namespace kelvane
