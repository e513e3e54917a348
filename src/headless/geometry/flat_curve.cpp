#include "headless/geometry/flat_curve.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace headless::geometry {
namespace {

constexpr double kSame = 1e-9;
constexpr double kTurn = 2 * std::numbers::pi;

void takeArc(FlatBox& box, const FlatArc& arc) {
  box.take(pointAt(arc, arc.from));
  box.take(pointAt(arc, arc.to));
  // Where it turns back along x, then along y.
  for (const double first : {std::atan2(arc.v.x, arc.u.x), std::atan2(arc.v.y, arc.u.y)})
    for (int half = 0; half < 2; ++half) {
      const double t = first + half * std::numbers::pi;
      const double within = t + kTurn * std::ceil((arc.from - t) / kTurn);
      if (within <= arc.to) box.take(pointAt(arc, within));
    }
}

}  // namespace

double lengthOf(const FlatPoint& v) { return std::hypot(v.x, v.y); }

FlatPoint pointAt(const FlatArc& arc, double t) {
  const double c = std::cos(t), s = std::sin(t);
  return {arc.centre.x + c * arc.u.x + s * arc.v.x, arc.centre.y + c * arc.u.y + s * arc.v.y};
}

bool isCircle(const FlatArc& arc) {
  const double radius = lengthOf(arc.u);
  return std::fabs(radius - lengthOf(arc.v)) <= kSame * radius;
}

bool isWhole(const FlatArc& arc) { return arc.to - arc.from >= kTurn - kSame; }

FlatCurve moved(const FlatCurve& curve, double x, double y) {
  const auto there = [x, y](const FlatPoint& p) -> FlatPoint { return {p.x + x, p.y + y}; };
  if (const auto* line = std::get_if<FlatLine>(&curve)) return FlatLine{there(line->from), there(line->to)};
  if (const auto* arc = std::get_if<FlatArc>(&curve)) {
    FlatArc made = *arc;
    made.centre = there(arc->centre);
    return made;
  }
  FlatPath path = std::get<FlatPath>(curve);
  std::ranges::transform(path.points, path.points.begin(), there);
  return path;
}

std::vector<std::array<FlatPoint, 4>> beziersOf(const FlatArc& arc) {
  const int count = std::max(1, static_cast<int>(std::ceil((arc.to - arc.from) / (std::numbers::pi / 2) - kSame)));
  const double step = (arc.to - arc.from) / count, reach = 4.0 / 3 * std::tan(step / 4);
  const auto along = [&](double t, double way) -> FlatPoint {  // from the point at t on, way times its derivative
    const FlatPoint at = pointAt(arc, t);
    const double c = std::cos(t) * way, s = std::sin(t) * way;
    return {at.x - s * arc.u.x + c * arc.v.x, at.y - s * arc.u.y + c * arc.v.y};
  };
  std::vector<std::array<FlatPoint, 4>> pieces;
  for (int i = 0; i < count; ++i) {
    const double from = arc.from + i * step, to = from + step;
    pieces.push_back({pointAt(arc, from), along(from, reach), along(to, -reach), pointAt(arc, to)});
  }
  return pieces;
}

void FlatBox::take(const FlatPoint& p) {
  if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
  left = isEmpty ? p.x : std::min(left, p.x);
  right = isEmpty ? p.x : std::max(right, p.x);
  low = isEmpty ? p.y : std::min(low, p.y);
  high = isEmpty ? p.y : std::max(high, p.y);
  isEmpty = false;
}

void FlatBox::take(const FlatCurve& curve) {
  if (const auto* arc = std::get_if<FlatArc>(&curve)) return takeArc(*this, *arc);
  if (const auto* line = std::get_if<FlatLine>(&curve)) {
    take(line->from);
    take(line->to);
    return;
  }
  for (const FlatPoint& point : std::get<FlatPath>(curve).points) take(point);
}

}  // namespace headless::geometry
