#include "headless/pictures/sheet_stroke.h"

#include <algorithm>
#include <cmath>

namespace headless {

std::string_view partName(SheetPart part) {
  static constexpr std::string_view kNames[kSheetParts] = {"FORMAT", "VIEWS", "TABLES",    "SYMBOLS",
                                                           "NOTES",  "LINES", "DIMENSIONS"};
  return kNames[static_cast<std::size_t>(part)];
}

std::span<const double> dashesOf(LineKind kind) {
  // Dashes of 12 and gaps of 3 widths of the line; of axes, dashes of 24 with a dot of half a width between them.
  static constexpr double kHidden[] = {12 * kNarrowPen, 3 * kNarrowPen};
  static constexpr double kAxis[] = {24 * kNarrowPen, 3 * kNarrowPen, kNarrowPen / 2, 3 * kNarrowPen};
  if (kind == LineKind::hidden) return kHidden;
  if (kind == LineKind::axis) return kAxis;
  return {};
}

bool isFinite(const SheetStroke& stroke) {
  const auto all = [](std::initializer_list<geometry::FlatPoint> points) {
    return std::ranges::all_of(points,
                               [](const geometry::FlatPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
  };
  if (!std::isfinite(stroke.pen.width)) return false;
  if (const auto* line = std::get_if<geometry::FlatLine>(&stroke.curve)) return all({line->from, line->to});
  if (const auto* arc = std::get_if<geometry::FlatArc>(&stroke.curve))
    return all({arc->centre, arc->u, arc->v, {arc->from, arc->to}});
  return std::ranges::all_of(std::get<geometry::FlatPath>(stroke.curve).points,
                             [&](const geometry::FlatPoint& p) { return all({p}); });
}

}  // namespace headless
