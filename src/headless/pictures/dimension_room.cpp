#include "headless/pictures/dimension_room.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace headless {

using geometry::FlatBox;
using geometry::FlatPoint;

namespace {

constexpr double kTouch = 0.1;        // mm: lines that meet at their ends don't lie upon each other
constexpr double kSameCircle = 0.01;  // mm
constexpr double kOut = 5;       // mm: how far a line goes on outside of its arrows, a leader outside of the outline
constexpr double kStride = 0.5;  // mm: at which leaders are looked at

bool meets(const FlatBox& a, const FlatBox& b) {
  return a.left + kTouch < b.right && b.left + kTouch < a.right && a.low + kTouch < b.high && b.low + kTouch < a.high;
}
// The same of a line without a width.
FlatBox widened(FlatBox box) {
  if (box.right - box.left < 2 * kTouch) {
    box.left -= 1.5 * kTouch;
    box.right += 1.5 * kTouch;
  }
  if (box.high - box.low < 2 * kTouch) {
    box.low -= 1.5 * kTouch;
    box.high += 1.5 * kTouch;
  }
  return box;
}
// A line that ends at another's end doesn't cross it.
FlatBox shortened(FlatBox box) {
  if (box.right - box.left > 4 * kTouch) {
    box.left += 1.5 * kTouch;
    box.right -= 1.5 * kTouch;
  }
  if (box.high - box.low > 4 * kTouch) {
    box.low += 1.5 * kTouch;
    box.high -= 1.5 * kTouch;
  }
  return box;
}
bool meetsAny(const std::vector<FlatBox>& boxes, const FlatBox& box) {
  return std::ranges::any_of(boxes, [&](const FlatBox& other) { return meets(other, box); });
}

// A leaning line as a row of small boxes.
std::vector<FlatBox> stridesOf(const FlatPoint& from, const FlatPoint& to) {
  constexpr double kMost = 2000;
  const double strides = std::clamp(std::hypot(to.x - from.x, to.y - from.y) / kStride, 1.0, kMost);
  std::vector<FlatBox> boxes;
  for (int i = 0; i <= static_cast<int>(strides); ++i) {
    const double way = i / strides;
    FlatBox box;
    box.take(FlatPoint{from.x + (to.x - from.x) * way, from.y + (to.y - from.y) * way});
    if (!box.isEmpty) boxes.push_back(widened(box));
  }
  return boxes;
}

}  // namespace

DimensionFrame DimensionFrame::along(FlatPoint way) {
  constexpr double kLevel = 1e-9;
  const double length = std::hypot(way.x, way.y);
  if (!(length > 0)) return {};
  DimensionFrame frame;
  frame.along_ = {way.x / length, way.y / length};
  if (frame.along_.x < -kLevel || (frame.along_.x < kLevel && frame.along_.y < 0))
    frame.along_ = {-frame.along_.x, -frame.along_.y};
  frame.degrees = std::atan2(frame.along_.y, frame.along_.x) * 180 / std::numbers::pi;
  return frame;
}

FlatBox DimensionFrame::box(double left, double right, double low, double high) const {
  FlatBox box;
  for (const double s : {left, right})
    for (const double t : {low, high}) box.take(at(s, t));
  return box;
}

std::pair<double, double> DimensionFrame::range(const FlatBox& box) const {
  const double all[] = {t({box.left, box.low}), t({box.right, box.low}), t({box.left, box.high}),
                        t({box.right, box.high})};
  const auto [low, high] = std::ranges::minmax(all);
  return {low, high};
}

double StraightLine::left() const { return std::min(hasArrowsInside ? from : from - kOut, textAt); }
double StraightLine::right() const { return std::max(hasArrowsInside ? to : to + kOut, textAt + width); }

Leader Leader::to(const FlatPoint& text, const FlatPoint& middle, double width) {
  Leader leader;
  leader.isToLeft = text.x + width / 2 < middle.x;
  leader.left = text.x;
  leader.knee = {leader.isToLeft ? text.x + width : text.x, text.y};
  const double x = leader.knee.x - middle.x, y = leader.knee.y - middle.y, length = std::hypot(x, y);
  leader.way = length > 0 ? FlatPoint{x / length, y / length} : FlatPoint{1, 0};
  return leader;
}

std::vector<Leader> Leader::around(const FlatPoint& middle, const FlatBox& outline, double width) {
  std::vector<std::pair<double, Leader>> found;
  for (const double degrees : {45, 135, -45, -135, 60, 120, -60, -120, 30, 150, -30, -150}) {
    const double turn = degrees * std::numbers::pi / 180;
    const FlatPoint way{std::cos(turn), std::sin(turn)};
    const double across = ((way.x > 0 ? outline.right : outline.left) - middle.x) / way.x;
    const double up = ((way.y > 0 ? outline.high : outline.low) - middle.y) / way.y;
    const double length = std::min(across, up) + kOut;
    Leader leader{.way = way, .knee = {middle.x + length * way.x, middle.y + length * way.y}, .isToLeft = way.x < 0};
    leader.left = leader.isToLeft ? leader.knee.x - width : leader.knee.x;
    found.emplace_back(length, leader);
  }
  std::ranges::stable_sort(found, {}, [](const auto& entry) { return entry.first; });
  std::vector<Leader> leaders;
  leaders.reserve(found.size());
  for (const auto& entry : found) leaders.push_back(entry.second);
  return leaders;
}

DimensionRoom::DimensionRoom(const SheetPicture& picture, double margin) : picture_(picture), margin_(margin) {
  for (const SheetStroke& stroke : picture.strokes) {
    if (stroke.pen.part == SheetPart::views || !isFinite(stroke)) continue;
    FlatBox box;
    box.take(stroke.curve);
    taken_.push_back(widened(box));
  }
  for (const SheetText& text : picture.texts) {
    const double width = faceWidth(text.text, text.height);
    taken_.push_back(
        {.left = text.x, .low = text.y, .right = text.x + width, .high = text.y + text.height, .isEmpty = false});
  }
}

void DimensionRoom::addLeader(const FlatPoint& from, const FlatPoint& to) {
  for (const FlatBox& box : stridesOf(from, to)) spans_.push_back(box);
}

bool DimensionRoom::hasRoom(const FlatBox& box) const {
  if (box.left < margin_ || box.low < margin_ || box.right > picture_.width - margin_ ||
      box.high > picture_.height - margin_)
    return false;
  return !meetsAny(taken_, box) && !meetsAny(dimensions_, box) && !meetsAny(spans_, shortened(box));
}

bool DimensionRoom::maySpan(const FlatBox& box) const {
  const FlatBox wide = widened(box);
  return std::ranges::none_of(dimensions_, [&](const FlatBox& other) { return meets(shortened(other), wide); });
}

bool DimensionRoom::mayLead(const FlatPoint& from, const FlatPoint& to) const {
  return std::ranges::none_of(stridesOf(from, to), [&](const FlatBox& box) { return meetsAny(dimensions_, box); });
}

void DimensionRoom::addMarks() {
  constexpr double kOff = 0.1;  // mm
  for (const SheetStroke& stroke : picture_.strokes) {
    if (stroke.pen.part != SheetPart::views || stroke.pen.kind == LineKind::axis || !isFinite(stroke)) continue;
    FlatBox box;
    box.take(stroke.curve);
    const bool isInside = std::ranges::any_of(views_, [&](const FlatBox& view) {
      return box.left > view.left - kOff && box.right < view.right + kOff && box.low > view.low - kOff &&
             box.high < view.high + kOff;
    });
    if (!isInside) taken_.push_back(widened(box));
  }
}

bool DimensionRoom::isCircleSeen(const FlatPoint& middle, double radius, std::optional<double> angle) const {
  const auto isThere = [&](const geometry::FlatArc& arc) {
    if (!angle || geometry::isWhole(arc)) return true;
    const double x = std::cos(*angle), y = std::sin(*angle);
    double at = std::atan2(arc.v.x * x + arc.v.y * y, arc.u.x * x + arc.u.y * y);
    const double from = std::min(arc.from, arc.to), to = std::max(arc.from, arc.to);
    at += std::ceil((from - at) / (2 * std::numbers::pi)) * 2 * std::numbers::pi;
    return at <= to;
  };
  return std::ranges::any_of(picture_.strokes, [&](const SheetStroke& stroke) {
    const auto* arc = std::get_if<geometry::FlatArc>(&stroke.curve);
    return arc && stroke.pen.kind == LineKind::visible && geometry::isCircle(*arc) &&
           std::fabs(geometry::lengthOf(arc->u) - radius) < kSameCircle &&
           std::hypot(arc->centre.x - middle.x, arc->centre.y - middle.y) < kSameCircle && isThere(*arc);
  });
}

}  // namespace headless
