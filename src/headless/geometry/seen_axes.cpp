#include "headless/geometry/seen_axes.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepTools.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <numbers>
#include <optional>

namespace headless::geometry {
namespace {

constexpr double kSmallest = 0.75;                   // radius on paper, in mm
constexpr double kBeyond = 0.25;                     // of the diameter
constexpr double kLeastBeyond = 1, kMostBeyond = 3;  // mm on paper
constexpr double kStraight = 1e-9;

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
  if (u2 - u1 < std::numbers::pi - 1e-6) return std::nullopt;
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

void addCross(FlatJoiner& lines, const FlatPoint& centre) {
  const double radius = lines.radiusAbout(centre);
  if (radius < kSmallest) return;
  const double reach = radius + beyond(radius);
  lines.take(SeenAs::axis, FlatLine{{centre.x - reach, centre.y}, {centre.x + reach, centre.y}});
  lines.take(SeenAs::axis, FlatLine{{centre.x, centre.y - reach}, {centre.x, centre.y + reach}});
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

}  // namespace

void addAxes(FlatJoiner& lines, const std::vector<TopoDS_Shape>& shapes, const Paper& paper) {
  for (const TopoDS_Shape& shape : shapes)
    for (TopExp_Explorer at(shape, TopAbs_FACE); at.More(); at.Next()) {
      const auto turned = turnedFace(TopoDS::Face(at.Current()));
      if (!turned) continue;
      const double lean = std::fabs(turned->axis.Direction().Dot(paper.z));
      if (lean > 1 - kStraight)
        addCross(lines, paper.at(turned->axis.Location()));
      else if (lean < kStraight)
        addLengthwise(lines, *turned, paper);
    }
}

}  // namespace headless::geometry
