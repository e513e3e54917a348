// The sheets of a drawing as a picture.
#pragma once

#include <string>

#include "headless/session.h"

namespace kelvane {

// An SVG of one sheet (from 1), or, for 0, of all sheets one below another: border, the format's lines and tables,
// tables with what their cells show, notes, symbols, drawn lines, each in its place on the sheet and in its width; a
// view shows the edges of its model, or a frame with its name. Empty: no drawing, or no such sheet.
std::string sheetSvg(headless::Session& session, creo::ProMdl drawing, int sheet);

}  // namespace kelvane
