#include "headless/geometry/flat_loop.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace headless::geometry {
namespace {

constexpr double kOff = 0.01;       // of a chord from its curve
constexpr double kMostLines = 1e5;  // of one hatching
constexpr double kMostPieces = 3600;

double distance(const FlatPoint& a, const FlatPoint& b) { return std::hypot(a.x - b.x, a.y - b.y); }

// For any number, as the answer may be that of a file that took the program over.
int wholePieces(double count) { return count >= 1 ? static_cast<int>(std::ceil(std::min(count, kMostPieces))) : 1; }

// Corners from the beginning of a curve to its end, both of them.
std::vector<BentCorner> corners(const FlatCurve& curve) {
  if (const auto* line = std::get_if<FlatLine>(&curve)) return {{line->from}, {line->to}};
  std::vector<BentCorner> made;
  if (const auto* path = std::get_if<FlatPath>(&curve)) {
    for (const FlatPoint& point : path->points) made.push_back({point});
    return made;
  }
  const auto& arc = std::get<FlatArc>(curve);
  const double turn = arc.to - arc.from;
  const bool isRound = isCircle(arc);
  const double ratio = std::clamp(1 - kOff / std::max(lengthOf(arc.u), 2 * kOff), 0.0, 1.0);
  const double step = isRound ? std::numbers::pi : 2 * std::acos(ratio);
  const int pieces = wholePieces(turn / step - 1e-6);
  for (int i = 0; i <= pieces; ++i) made.push_back({pointAt(arc, arc.from + turn * i / pieces)});
  if (isRound)
    for (int i = 0; i < pieces; ++i) made[static_cast<std::size_t>(i)].bend = std::tan(turn / pieces / 4);
  return made;
}

// From its end to its beginning.
void turnRound(std::vector<BentCorner>& made) {
  std::ranges::reverse(made);
  for (std::size_t i = 0; i + 1 < made.size(); ++i) made[i].bend = -made[i + 1].bend;
  made.back().bend = 0;
}

// Bent ways as chords.
std::vector<FlatPoint> pointsOf(const FlatLoop& loop) {
  const std::vector<BentCorner> bent = cornersOf(loop);
  std::vector<FlatPoint> points;
  for (std::size_t i = 0; i < bent.size(); ++i) {
    const FlatPoint &a = bent[i].at, &b = bent[(i + 1) % bent.size()].at;
    points.push_back(a);
    const double bend = bent[i].bend, chord = distance(a, b);
    if (bend == 0 || chord == 0) continue;
    const double angle = 4 * std::atan(bend), radius = chord / 2 / std::sin(std::fabs(angle) / 2);
    // From the middle of the chord to the centre, at its left for a positive bend below half a turn.
    const double away = (1 - bend * bend) / (4 * bend);
    const FlatPoint centre{(a.x + b.x) / 2 - away * (b.y - a.y), (a.y + b.y) / 2 + away * (b.x - a.x)};
    const double step = 2 * std::acos(std::clamp(1 - kOff / std::max(radius, 2 * kOff), 0.0, 1.0));
    const int pieces = wholePieces(std::fabs(angle) / step);
    const double first = std::atan2(a.y - centre.y, a.x - centre.x);
    for (int k = 1; k < pieces; ++k) {
      const double t = first + angle * k / pieces;
      points.push_back({centre.x + radius * std::cos(t), centre.y + radius * std::sin(t)});
    }
  }
  return points;
}

}  // namespace

std::vector<BentCorner> cornersOf(const FlatLoop& loop) {
  std::vector<BentCorner> all;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    std::vector<BentCorner> next = corners(loop[i]);
    // The first curve ends where the second has an end; each other one begins where the one before it ends.
    if (all.empty() && loop.size() > 1) {
      const std::vector<BentCorner> second = corners(loop[1]);
      const auto away = [&](const FlatPoint& p) {
        return std::min(distance(p, second.front().at), distance(p, second.back().at));
      };
      if (away(next.front().at) < away(next.back().at)) turnRound(next);
    } else if (!all.empty() && distance(all.back().at, next.back().at) < distance(all.back().at, next.front().at)) {
      turnRound(next);
    }
    if (!all.empty()) all.pop_back();
    all.insert(all.end(), next.begin(), next.end());
  }
  if (all.size() > 1) all.pop_back();  // where it began
  return all;
}

std::vector<FlatLine> hatched(const std::vector<FlatLoop>& loops, const HatchLines& lines) {
  const double turn = lines.angle * std::numbers::pi / 180, c = std::cos(turn), s = std::sin(turn);
  // In coordinates along and across the lines.
  std::vector<FlatLine> edges;
  FlatBox box;
  for (const FlatLoop& loop : loops) {
    std::vector<FlatPoint> points = pointsOf(loop);
    for (FlatPoint& p : points) p = {c * p.x + s * p.y, c * p.y - s * p.x};
    for (std::size_t i = 0; i < points.size(); ++i) {
      edges.push_back({points[i], points[(i + 1) % points.size()]});
      box.take(points[i]);
    }
  }
  std::vector<FlatLine> made;
  if (box.isEmpty || !(lines.spacing > 0) || !((box.high - box.low) / lines.spacing < kMostLines)) return made;
  const double first = std::ceil((box.low - lines.shift) / lines.spacing);
  const int count = static_cast<int>((box.high - box.low) / lines.spacing) + 2;
  for (int n = 0; n < count; ++n) {
    const double across = (first + n) * lines.spacing + lines.shift;
    std::vector<double> met;
    for (const auto& [a, b] : edges) {
      const double place = a.x + (across - a.y) / (b.y - a.y) * (b.x - a.x);
      if ((a.y > across) != (b.y > across) && std::isfinite(place)) met.push_back(place);
    }
    std::ranges::sort(met);
    for (std::size_t i = 0; i + 1 < met.size(); i += 2)
      made.push_back({{c * met[i] - s * across, s * met[i] + c * across},
                      {c * met[i + 1] - s * across, s * met[i + 1] + c * across}});
  }
  return made;
}

}  // namespace headless::geometry
