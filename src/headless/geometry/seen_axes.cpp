#include "headless/geometry/seen_axes.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepTools.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <functional>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <map>
#include <numbers>
#include <optional>

namespace headless::geometry {
namespace {

constexpr double kSmallest = 0.75;                   // radius on paper, in mm
constexpr double kBeyond = 0.25;                     // of the diameter
constexpr double kLeastBeyond = 1, kMostBeyond = 3;  // mm on paper
constexpr double kStraight = 1e-9;
constexpr std::size_t kFewestOnCircle = 3;  // holes that have a circle through their middles
constexpr double kSameLength = 0.01;        // mm on paper

double beyond(double radius) { return std::clamp(kBeyond * 2 * radius, kLeastBeyond, kMostBeyond); }

// A cylinder's or a cone's piece of its axis, with the radii at its ends.
struct Turned {
  gp_Ax1 axis;
  double from = 0, to = 0;  // along the axis
  double first = 0, last = 0;
};

std::optional<Turned> turnedFace(const TopoDS_Face& face) {
  const BRepAdaptor_Surface surface(face);
  if (surface.GetType() != GeomAbs_Cylinder && surface.GetType() != GeomAbs_Cone) return std::nullopt;
  double u1 = 0, u2 = 0, v1 = 0, v2 = 0;
  BRepTools::UVBounds(face, u1, u2, v1, v2);
  if (u2 - u1 < kHalfTurn) return std::nullopt;
  if (surface.GetType() == GeomAbs_Cylinder) {
    const gp_Cylinder cylinder = surface.Cylinder();
    return Turned{cylinder.Axis(), v1, v2, cylinder.Radius(), cylinder.Radius()};
  }
  const gp_Cone cone = surface.Cone();
  const double rise = std::cos(cone.SemiAngle()), widen = std::sin(cone.SemiAngle());
  return Turned{cone.Axis(), v1 * rise, v2 * rise, std::fabs(cone.RefRadius() + v1 * widen),
                std::fabs(cone.RefRadius() + v2 * widen)};
}

FlatPoint along(const FlatPoint& from, const FlatPoint& way, double length) {
  return {from.x + length * way.x, from.y + length * way.y};
}

// A hole or a pin that is seen along its axis.
struct Round {
  FlatPoint centre;
  RoundEdge edge;
};
// Through the middles of holes.
struct HoleCircle {
  FlatPoint centre;
  double radius = 0;
};

// To where the circle is; where it isn't, a little beyond its centre.
void addCross(FlatJoiner& lines, const Round& round) {
  const FlatPoint& centre = round.centre;
  const RoundEdge& edge = round.edge;
  const auto reach = [&edge](std::size_t quarter) {
    return (edge.isThere.at(quarter) ? edge.radius : 0) + beyond(edge.radius);
  };
  if (edge.isThere[0] || edge.isThere[2])
    lines.take(SeenAs::axis, FlatLine{{centre.x - reach(2), centre.y}, {centre.x + reach(0), centre.y}});
  if (edge.isThere[1] || edge.isThere[3])
    lines.take(SeenAs::axis, FlatLine{{centre.x, centre.y - reach(3)}, {centre.x, centre.y + reach(1)}});
}

bool isWhole(const Round& round) { return std::ranges::count(round.edge.isThere, true) == 4; }
bool isSame(double a, double b) { return std::fabs(a - b) < kSameLength; }
double distance(const FlatPoint& a, const FlatPoint& b) { return lengthOf({a.x - b.x, a.y - b.y}); }

// Are they as far from their neighbours as they would be side by side all around?
bool areEvenlySpread(const std::vector<const Round*>& holes, const HoleCircle& circle) {
  std::vector<double> angles;
  angles.reserve(holes.size());
  for (const Round* hole : holes)
    angles.push_back(std::atan2(hole->centre.y - circle.centre.y, hole->centre.x - circle.centre.x));
  std::ranges::sort(angles);
  angles.push_back(angles.front() + 2 * std::numbers::pi);
  const double step = 2 * std::numbers::pi / static_cast<double>(holes.size());
  for (std::size_t i = 1; i < angles.size(); ++i)
    if (!isSame((angles[i] - angles[i - 1]) * circle.radius, step * circle.radius)) return false;
  return true;
}

// The circles through equal holes that are evenly spread about the axis of something larger that is round; holes in
// rows, where each stands in the middle of four others, have none.
std::map<const Round*, HoleCircle> holeCircles(const std::vector<Round>& rounds) {
  std::map<const Round*, HoleCircle> found;
  double smallest = HUGE_VAL;
  for (const Round& round : rounds) smallest = std::min(smallest, round.edge.radius);
  for (const Round& middle : rounds) {
    if (middle.edge.radius - kSameLength <= smallest) continue;  // nothing is smaller
    std::vector<const Round*> open;
    for (const Round& round : rounds)
      if (round.edge.radius < middle.edge.radius - kSameLength && isWhole(round) &&
          distance(round.centre, middle.centre) > round.edge.radius && !found.contains(&round))
        open.push_back(&round);
    while (!open.empty()) {
      const Round& first = *open.front();
      const HoleCircle circle{middle.centre, distance(first.centre, middle.centre)};
      const auto isOther = [&](const Round* round) {
        return !isSame(round->edge.radius, first.edge.radius) ||
               !isSame(distance(round->centre, middle.centre), circle.radius);
      };
      const auto others = std::stable_partition(open.begin(), open.end(), std::not_fn(isOther));
      const std::vector<const Round*> equal(open.begin(), others);
      if (equal.size() >= kFewestOnCircle && areEvenlySpread(equal, circle))
        for (const Round* hole : equal) found[hole] = circle;
      open.erase(open.begin(), others);
    }
  }
  return found;
}

// A hole of a circle of them has that circle in place of the line across, and one that leads to its middle.
void addOnCircle(FlatJoiner& lines, const Round& hole, const HoleCircle& circle) {
  lines.take(SeenAs::axis, FlatArc{circle.centre, {circle.radius, 0}, {0, circle.radius}, 0, 2 * std::numbers::pi});
  const double reach = hole.edge.radius + beyond(hole.edge.radius);
  const FlatPoint out{(hole.centre.x - circle.centre.x) / circle.radius,
                      (hole.centre.y - circle.centre.y) / circle.radius};
  lines.take(SeenAs::axis, FlatLine{along(hole.centre, out, -reach), along(hole.centre, out, reach)});
}

// Places that are apart.
class Places {
 public:
  // False where one of them is there already.
  bool add(const FlatPoint& place) {
    const long long x = std::llround(place.x / kSameLength), y = std::llround(place.y / kSameLength);
    for (long long i = x - 1; i <= x + 1; ++i)
      for (long long j = y - 1; j <= y + 1; ++j) {
        const auto [first, last] = known_.equal_range({i, j});
        if (std::any_of(first, last, [&](const auto& entry) { return distance(entry.second, place) < kSameLength; }))
          return false;
      }
    known_.emplace(std::array{x, y}, place);
    return true;
  }

 private:
  std::multimap<std::array<long long, 2>, FlatPoint> known_;
};

// Of what is seen along its axis, each place once, with the largest circle about it.
void addEndOn(FlatJoiner& lines, const std::vector<FlatPoint>& centres) {
  std::vector<Round> rounds;
  Places known;
  for (const FlatPoint& centre : centres) {
    const RoundEdge edge = lines.roundAbout(centre);
    if (edge.radius >= kSmallest && known.add(centre)) rounds.push_back({centre, edge});
  }
  const auto circles = holeCircles(rounds);
  for (const Round& round : rounds) {
    const auto circle = circles.find(&round);
    if (circle == circles.end())
      addCross(lines, round);
    else
      addOnCircle(lines, round, circle->second);
  }
}

// Only where the face's outline is drawn.
void addLengthwise(FlatJoiner& lines, const Turned& turned, const Paper& paper) {
  const auto at = [&](double place) {
    return paper.at(turned.axis.Location().XYZ() + turned.axis.Direction().XYZ() * place);
  };
  const FlatPoint from = at(turned.from), to = at(turned.to);
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  const double first = turned.first * paper.scale, last = turned.last * paper.scale;
  if (length < kStraight || std::max(first, last) < kSmallest) return;
  const FlatPoint way{(to.x - from.x) / length, (to.y - from.y) / length}, across{-way.y, way.x};
  const bool isDrawn = lines.hasEdgeUpon({along(from, across, first), along(to, across, last)}) ||
                       lines.hasEdgeUpon({along(from, across, -first), along(to, across, -last)});
  if (!isDrawn) return;
  const double more = beyond(std::max(first, last));
  lines.take(SeenAs::axis, FlatLine{along(from, way, -more), along(to, way, more)});
}

// The teeth where they stand, in the picture's unit.
Gear placed(const Gear& gear, const PlacedBody& body) {
  Gear made = gear;
  creo::ProVector& at = made.place.origin;
  at = {at.x * body.scale, at.y * body.scale, at.z * body.scale};
  made.place = creo::transformed(body.place, made.place);
  for (double* number : {&made.tip, &made.pitch, &made.root, &made.length}) *number *= body.scale;
  return made;
}

// Gears that are seen leaning have none: theirs would be ellipses that nobody reads.
void addPitch(FlatJoiner& lines, const Gear& gear, const Paper& paper) {
  const creo::ProVector &at = gear.place.origin, &z = gear.place.zAxis;
  const gp_XYZ foot(at.x, at.y, at.z), axis(z.x, z.y, z.z);
  const double lean = std::fabs(axis.Dot(paper.z.XYZ()));
  const double tip = gear.tip / 2 * paper.scale, pitch = gear.pitch / 2 * paper.scale;
  const FlatPoint from = paper.at(foot), to = paper.at(foot + axis * gear.length);
  if (lean > 1 - kStraight) {
    if (gear.isToothed || lines.hasEdgeUpon(from, tip))
      lines.take(SeenAs::axis, FlatArc{from, {pitch, 0}, {0, pitch}, 0, 2 * std::numbers::pi});
    return;
  }
  if (lean >= kStraight) return;
  const FlatPoint way{(to.x - from.x) / (gear.length * paper.scale), (to.y - from.y) / (gear.length * paper.scale)};
  for (const FlatPoint& across : {FlatPoint{-way.y, way.x}, FlatPoint{way.y, -way.x}}) {
    if (!gear.isToothed && !lines.hasEdgeUpon({along(from, across, tip), along(to, across, tip)})) continue;
    const FlatPoint first = along(from, across, pitch), last = along(to, across, pitch);
    lines.take(SeenAs::axis, FlatLine{along(first, way, -kMostBeyond), along(last, way, kMostBeyond)});
  }
}

}  // namespace

void addPitch(FlatJoiner& lines, const std::vector<PlacedBody>& bodies, const Paper& paper) {
  for (const PlacedBody& body : bodies)
    for (const Gear& gear : body.gears) addPitch(lines, placed(gear, body), paper);
}

void addAxes(FlatJoiner& lines, const std::vector<TopoDS_Shape>& shapes, const Paper& paper) {
  std::vector<FlatPoint> centres;
  for (const TopoDS_Shape& shape : shapes)
    for (TopExp_Explorer at(shape, TopAbs_FACE); at.More(); at.Next()) {
      const auto turned = turnedFace(TopoDS::Face(at.Current()));
      if (!turned) continue;
      const double lean = std::fabs(turned->axis.Direction().Dot(paper.z));
      if (lean > 1 - kStraight)
        centres.push_back(paper.at(turned->axis.Location().XYZ()));
      else if (lean < kStraight)
        addLengthwise(lines, *turned, paper);
    }
  addEndOn(lines, centres);
}

}  // namespace headless::geometry
