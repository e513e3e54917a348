// Where on a sheet dimensions may stand.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "headless/pictures/dimension_pen.h"

namespace headless {

// Coordinates along a dimension's line (s) and across it (t), on the side on which its text stands.
struct DimensionFrame {
  geometry::FlatPoint along_{1, 0};
  double degrees = 0;

  // Turned such that a text along it is read from below or from the right: over -90, at most 90 degrees.
  static DimensionFrame along(geometry::FlatPoint way);
  [[nodiscard]] double s(const geometry::FlatPoint& p) const { return p.x * along_.x + p.y * along_.y; }
  [[nodiscard]] double t(const geometry::FlatPoint& p) const { return p.y * along_.x - p.x * along_.y; }
  [[nodiscard]] geometry::FlatPoint at(double s, double t) const {
    return {s * along_.x - t * along_.y, s * along_.y + t * along_.x};
  }
  [[nodiscard]] geometry::FlatPoint way(double sign) const { return {sign * along_.x, sign * along_.y}; }
  // What is around a rectangle of these coordinates, and how far a box reaches across.
  [[nodiscard]] geometry::FlatBox box(double left, double right, double low, double high) const;
  [[nodiscard]] std::pair<double, double> range(const geometry::FlatBox& box) const;
};

// A dimension's line, in its frame.
struct StraightLine {
  double from = 0, to = 0;  // of what is measured
  double level = 0;
  double textAt = 0, width = 0;  // of the text
  bool hasTextInside = true, hasArrowsInside = true;
  [[nodiscard]] double left() const;
  [[nodiscard]] double right() const;
};

// A leader to a circle.
struct Leader {
  geometry::FlatPoint way, knee;  // way: from the circle's middle, of length 1
  double left = 0;                // where the text begins
  bool isToLeft = false;          // of the knee

  // To a text that begins at `text`.
  static Leader to(const geometry::FlatPoint& text, const geometry::FlatPoint& middle, double width);
  // Those that lead out of the outline, the shortest first.
  static std::vector<Leader> around(const geometry::FlatPoint& middle, const geometry::FlatBox& outline, double width);
  [[nodiscard]] geometry::FlatBox box(double width, double below, double above) const {
    return {.left = left, .low = knee.y - below, .right = left + width, .high = knee.y + above, .isEmpty = false};
  }
};

// What lies on the sheet: views as a whole, each other stroke and text, dimensions.
class DimensionRoom {
 public:
  DimensionRoom(const SheetPicture& picture, double margin);
  void addView(const geometry::FlatBox& outline) {
    views_.push_back(outline);
    taken_.push_back(outline);
  }
  // Behind the views: what stands beside their outlines, such as the arrows of cutting lines and circles of details.
  void addMarks();
  // A dimension's line with its text; an extension line; a leader.
  void add(const geometry::FlatBox& box) { dimensions_.push_back(box); }
  void addSpan(const geometry::FlatBox& box) { spans_.push_back(box); }
  void addLeader(const geometry::FlatPoint& from, const geometry::FlatPoint& to);

  // For a line with its text: on the sheet, upon nothing.
  [[nodiscard]] bool hasRoom(const geometry::FlatBox& box) const;
  // An extension line and a leader cross no dimension's line or text.
  [[nodiscard]] bool maySpan(const geometry::FlatBox& box) const;
  [[nodiscard]] bool mayLead(const geometry::FlatPoint& from, const geometry::FlatPoint& to) const;
  // Is the circle, or an arc of it, drawn? With an angle, in radians: the place of it there.
  [[nodiscard]] bool isCircleSeen(const geometry::FlatPoint& middle, double radius,
                                  std::optional<double> angle = std::nullopt) const;

 private:
  const SheetPicture& picture_;
  double margin_;
  std::vector<geometry::FlatBox> views_, taken_, dimensions_, spans_;
};

}  // namespace headless
