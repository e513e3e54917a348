#include "headless/pictures/dimension_pen.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace headless {

using geometry::FlatPoint;

namespace {

constexpr double kSmall = 0.7;  // of the height: tolerances of two lines
constexpr double kLine = 1.4;   // of the height: from one line to the next
constexpr SheetPen kPen{.width = kNarrowPen, .part = SheetPart::dimensions};

}  // namespace

void DimensionPen::line(const FlatPoint& from, const FlatPoint& to) {
  picture_.strokes.push_back({geometry::FlatLine{from, to}, kPen});
}

void DimensionPen::curve(const geometry::FlatArc& arc) { picture_.strokes.push_back({arc, kPen}); }

void DimensionPen::arrow(const FlatPoint& tip, const FlatPoint& way) {
  const FlatPoint end{tip.x - kArrow * way.x, tip.y - kArrow * way.y};
  const FlatPoint across{-way.y * kArrowWidth / 2, way.x * kArrowWidth / 2};
  SheetPen pen = kPen;
  pen.isFilled = true;
  const geometry::FlatPath area{{tip, {end.x + across.x, end.y + across.y}, {end.x - across.x, end.y - across.y}, tip}};
  picture_.strokes.push_back({area, pen});
}

double DimensionPen::widthOf(const DimensionText& text) const {
  const double stack = std::max(faceWidth(text.upper, kSmall * height_), faceWidth(text.lower, kSmall * height_));
  double width = faceWidth(text.before, height_) + stack + faceWidth(text.after, height_);
  for (const std::wstring& line : text.below) width = std::max(width, faceWidth(line, height_));
  return width + (stack > 0 ? 0.4 * height_ : 0);
}

double DimensionPen::below(const DimensionText& text) const {
  return text.below.empty() ? 0 : kTextGap + kLine * height_ * static_cast<double>(text.below.size());
}

void DimensionPen::write(const std::wstring& text, const FlatPoint& at, double along, double up, double height,
                         double degrees) {
  if (text.empty()) return;
  const double turn = degrees * std::numbers::pi / 180, c = std::cos(turn), s = std::sin(turn);
  picture_.texts.push_back({.x = at.x + c * along - s * up,
                            .y = at.y + s * along + c * up,
                            .height = height,
                            .angle = degrees,
                            .text = text,
                            .part = SheetPart::dimensions});
}

void DimensionPen::text(const DimensionText& text, const FlatPoint& at, double degrees) {
  const double small = kSmall * height_, base = kTextGap + (text.lower.empty() ? 0 : 0.2 * height_);
  // In one piece where nothing stands between: faces that are wider than this one would let pieces overlap.
  if (text.upper.empty()) {
    write(text.before + text.after, at, 0, base, height_, degrees);
  } else {
    write(text.before, at, 0, base, height_, degrees);
    double along = faceWidth(text.before, height_) + 0.2 * height_;
    write(text.upper, at, along, base + 0.6 * height_, small, degrees);
    write(text.lower, at, along, base - 0.15 * height_, small, degrees);
    along += std::max(faceWidth(text.upper, small), faceWidth(text.lower, small)) + 0.2 * height_;
    write(text.after, at, along, base, height_, degrees);
  }
  double up = -kTextGap - height_;
  for (const std::wstring& line : text.below) {
    write(line, at, 0, up, height_, degrees);
    up -= kLine * height_;
  }
}

}  // namespace headless
