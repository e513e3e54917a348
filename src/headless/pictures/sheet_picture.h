// What a sheet of a drawing shows, as lines and texts that every writer of pictures can draw: SVG, DXF, PDF, images.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "headless/geometry/flat_curve.h"
#include "headless/pictures/picture_sources.h"

namespace headless {

struct Model;       // model/models.h
class ShownModels;  // drawn_views.h

// What an element belongs to; writers that know layers put each on one of its own.
enum class SheetPart { format, views, tables, symbols, notes, lines };
constexpr int kSheetParts = 6;
// "FORMAT", "VIEWS" ...
std::string_view partName(SheetPart part);

// Red, green and blue, 8 bits each, the red highest.
using SheetColor = std::uint32_t;

// What a line means in a view, as ISO 128 draws it.
enum class LineKind { plain, visible, smooth, hidden, axis };  // plain: it belongs to no view
// The two pens of ISO 128 that a sheet is drawn with, in mm: what is visible is drawn with the wide one.
constexpr double kWidePen = 0.5, kNarrowPen = 0.25;
// Strokes and gaps in turn, in mm; none: the line has no gaps.
std::span<const double> dashesOf(LineKind kind);

// Lengths are in mm, places from the sheet's lower left corner, y upwards.
struct SheetPen {
  double width = 0;  // of the stroke, which ends square at its points
  SheetColor color = 0;
  SheetPart part = SheetPart::lines;
  LineKind kind = LineKind::plain;
};
struct SheetStroke {
  geometry::FlatCurve curve;
  SheetPen pen;
};
bool isFinite(const SheetStroke& stroke);
struct SheetText {
  double x = 0, y = 0;  // where the base line begins
  double height = 0;    // of the face
  double angle = 0;     // degrees, counter-clockwise
  double room = 0;      // how wide it may be; 0: as it comes. For a usual face the height says so already
  std::wstring text;
  SheetColor color = 0;
  SheetPart part = SheetPart::notes;
  bool isBold = false, isOblique = false;
  std::string font = {};  // the name of a face; empty: the usual one
};
struct SheetPicture {
  double width = 0, height = 0;  // of the sheet
  bool isInMm = true;            // else the drawing measures the sheet in inches
  std::vector<SheetStroke> strokes;
  std::vector<SheetText> texts;
};

// The format's lines and tables, tables with what their cells show, notes, symbols, drawn lines, each in its place on
// the sheet and in its width. A view shows the edges of its model, one that is drawn by facets says so below; where
// there is nothing to show it is a frame with the model's name and its own. A cell's text that is wider than the cell
// is smaller. drawing: a drawing or a format; sheet: from 1 to the sheet count, one that isn't there gives an empty
// picture. models: of the drawing's other sheets, so that what several of them show is gathered once.
SheetPicture sheetPicture(const PictureSources& sources, ShownModels& models, const Model& drawing, int sheet);
SheetPicture sheetPicture(const PictureSources& sources, const Model& drawing, int sheet);

// About how wide a usual sans-serif face writes it.
double textWidth(std::wstring_view text, double height);

}  // namespace headless
