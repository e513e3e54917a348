// The strokes of sheets: lines and curves with the pen that draws them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "headless/geometry/flat_curve.h"

namespace headless {

// What an element belongs to; writers that know layers put each on one of its own.
enum class SheetPart { format, views, tables, symbols, notes, lines, dimensions };
constexpr int kSheetParts = 7;
// "FORMAT", "VIEWS" ...
std::string_view partName(SheetPart part);

// Red, green and blue, 8 bits each, the red highest.
using SheetColor = std::uint32_t;

// What a line means in a view, as ISO 128 draws it.
enum class LineKind { plain, visible, smooth, hidden, axis, hatch };  // plain: it belongs to no view
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
  bool isOfArea = false;  // of a hatching that stands as a whole beside the strokes
  bool isFilled = false;  // the chain of lines is the edge of an area of the colour
};
struct SheetStroke {
  geometry::FlatCurve curve;
  SheetPen pen;
};
bool isFinite(const SheetStroke& stroke);

}  // namespace headless
