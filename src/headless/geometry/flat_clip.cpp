#include "headless/geometry/flat_clip.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace headless::geometry {
namespace {

constexpr int kPiecesATurn = 360;  // of an arc, in each of which it crosses the bound once at most
constexpr int kHalvings = 50;

// Over 0 inside.
double depth(const FlatPoint& p, const FlatBound& bound) {
  switch (bound.kind) {
    case FlatBound::Kind::right:
      return p.x - bound.radius;
    case FlatBound::Kind::left:
      return bound.radius - p.x;
    case FlatBound::Kind::above:
      return p.y - bound.radius;
    case FlatBound::Kind::below:
      return bound.radius - p.y;
    case FlatBound::Kind::circle:
      break;
  }
  return bound.radius - std::hypot(p.x - bound.centre.x, p.y - bound.centre.y);
}

struct Interval {
  double from = 0, to = 0;
};
// Where the curve is inside, by its parameter. steps: in their order; it crosses the bound once at most between two.
std::vector<Interval> inside(const std::function<FlatPoint(double)>& at, const std::vector<double>& steps,
                             const FlatBound& bound) {
  std::vector<Interval> found;
  const auto add = [&](double from, double to) {
    if (!(from < to)) return;
    if (!found.empty() && found.back().to == from)
      found.back().to = to;
    else
      found.push_back({from, to});
  };
  for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
    double low = steps[i], high = steps[i + 1];
    const bool begins = depth(at(low), bound) > 0, ends = depth(at(high), bound) > 0;
    if (begins && ends) add(low, high);
    if (begins == ends) continue;
    for (int k = 0; k < kHalvings; ++k) {
      const double middle = (low + high) / 2;
      (depth(at(middle), bound) > 0) == begins ? low = middle : high = middle;
    }
    begins ? add(steps[i], low) : add(high, steps[i + 1]);
  }
  return found;
}

// Beginning, where the line comes nearest to the circle's centre, end.
std::vector<double> stepsOf(const FlatLine& line, const FlatPoint& centre) {
  const double x = line.to.x - line.from.x, y = line.to.y - line.from.y, square = x * x + y * y;
  const double nearest = square > 0 ? ((centre.x - line.from.x) * x + (centre.y - line.from.y) * y) / square : 0;
  if (nearest > 0 && nearest < 1) return {0, nearest, 1};
  return {0, 1};
}

std::vector<FlatLine> within(const FlatLine& line, const FlatBound& bound) {
  const auto at = [&line](double t) -> FlatPoint {
    return {line.from.x + t * (line.to.x - line.from.x), line.from.y + t * (line.to.y - line.from.y)};
  };
  std::vector<FlatLine> pieces;
  for (const auto& [from, to] : inside(at, stepsOf(line, bound.centre), bound)) pieces.push_back({at(from), at(to)});
  return pieces;
}

std::vector<FlatCurve> within(const FlatArc& arc, const FlatBound& bound) {
  const int count = std::max(2, static_cast<int>((arc.to - arc.from) / (2 * std::numbers::pi) * kPiecesATurn));
  std::vector<double> steps;
  for (int i = 0; i <= count; ++i) steps.push_back(arc.from + (arc.to - arc.from) * i / count);
  steps.back() = arc.to;
  std::vector<Interval> found = inside([&arc](double t) { return pointAt(arc, t); }, steps, bound);
  // A whole ellipse goes on where it began.
  if (isWhole(arc) && found.size() > 1 && found.front().from == arc.from && found.back().to == arc.to) {
    found.front().from = found.back().from - (arc.to - arc.from);
    found.pop_back();
  }
  std::vector<FlatCurve> pieces;
  for (const auto& [from, to] : found) {
    FlatArc piece = arc;
    piece.from = from;
    piece.to = to;
    pieces.emplace_back(piece);
  }
  return pieces;
}

std::vector<FlatCurve> within(const FlatPath& path, const FlatBound& bound) {
  const auto isSame = [](const FlatPoint& a, const FlatPoint& b) { return a.x == b.x && a.y == b.y; };
  std::vector<FlatPath> paths;
  for (std::size_t i = 0; i + 1 < path.points.size(); ++i)
    for (const FlatLine& line : within(FlatLine{path.points[i], path.points[i + 1]}, bound)) {
      if (paths.empty() || !isSame(paths.back().points.back(), line.from)) paths.push_back({{line.from}});
      paths.back().points.push_back(line.to);
    }
  return {paths.begin(), paths.end()};
}

}  // namespace

std::vector<FlatCurve> within(const FlatCurve& curve, const FlatBound& bound) {
  if (const auto* arc = std::get_if<FlatArc>(&curve)) return within(*arc, bound);
  if (const auto* path = std::get_if<FlatPath>(&curve)) return within(*path, bound);
  const std::vector<FlatLine> lines = within(std::get<FlatLine>(curve), bound);
  return {lines.begin(), lines.end()};
}

}  // namespace headless::geometry
