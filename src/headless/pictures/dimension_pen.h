// Draws dimensions: lines, arrows and texts.
#pragma once

#include "headless/pictures/dimension_text.h"
#include "headless/pictures/sheet_content.h"

namespace headless {

// ISO 129-1: filled arrows; gaps and overshoots of extension lines are eight widths of the line.
constexpr double kArrow = 3, kArrowWidth = 1;
constexpr double kBeyondLine = 8 * kNarrowPen;
constexpr double kTextGap = 1;  // between a line and the text upon it

class DimensionPen {
 public:
  // textHeight: in mm.
  DimensionPen(SheetPicture& picture, double textHeight) : picture_(picture), height_(textHeight) {}
  void line(const geometry::FlatPoint& from, const geometry::FlatPoint& to);
  void curve(const geometry::FlatArc& arc);
  // way: where it points, of length 1.
  void arrow(const geometry::FlatPoint& tip, const geometry::FlatPoint& way);
  // `at` lies on the dimension's line where the text begins; degrees: the line's.
  void text(const DimensionText& text, const geometry::FlatPoint& at, double degrees);
  [[nodiscard]] double widthOf(const DimensionText& text) const;
  // How far it reaches above the line and below it.
  [[nodiscard]] double above() const { return kTextGap + 1.35 * height_; }
  [[nodiscard]] double below(const DimensionText& text) const;

 private:
  void write(const std::wstring& text, const geometry::FlatPoint& at, double along, double up, double height,
             double degrees);
  SheetPicture& picture_;
  double height_;
};

}  // namespace headless
