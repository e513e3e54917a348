#include "headless/geometry/flat_projection.h"

#include <GCPnts_TangentialDeflection.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Ax3.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>
#include <numbers>

namespace headless::geometry {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kNothing = 1e-6;                  // mm on paper
constexpr double kChain = 0.01, kChainTurn = 0.2;  // mm on paper, and radians from piece to piece
constexpr double kAlike = 1e-4, kMostOff = 0.002;  // of the radius, and mm on paper
constexpr double kFlat = 1e-5;                     // an ellipse's ratio; files tell it in six decimals
constexpr int kProbes = 32;
constexpr double kFarthestCentre = 1e5;  // mm on paper: a flatter arc is a chain of lines

gp_Dir direction(const creo::ProVector& v) { return {v.x, v.y, v.z}; }

FlatPoint operator-(const FlatPoint& a, const FlatPoint& b) { return {a.x - b.x, a.y - b.y}; }
double dot(const FlatPoint& a, const FlatPoint& b) { return a.x * b.x + a.y * b.y; }
double cross(const FlatPoint& a, const FlatPoint& b) { return a.x * b.y - a.y * b.x; }

std::optional<FlatCurve> lineBetween(const FlatPoint& from, const FlatPoint& to) {
  if (lengthOf(to - from) < kNothing) return std::nullopt;
  return FlatLine{from, to};
}

// An ellipse that is seen from its side goes to and fro along a line.
std::optional<FlatCurve> flattened(const FlatArc& arc) {
  const FlatPoint& longer = lengthOf(arc.u) >= lengthOf(arc.v) ? arc.u : arc.v;
  const double length = lengthOf(longer);
  if (length < kNothing) return std::nullopt;
  const FlatPoint way{longer.x / length, longer.y / length};
  const double a = dot(arc.u, way), b = dot(arc.v, way), reach = std::hypot(a, b), farthest = std::atan2(b, a);
  double low = HUGE_VAL, high = -HUGE_VAL;
  const auto take = [&](double t) {
    const double at = reach * std::cos(t - farthest);
    low = std::min(low, at);
    high = std::max(high, at);
  };
  take(arc.from);
  take(arc.to);
  const double turning = farthest + std::numbers::pi * std::ceil((arc.from - farthest) / std::numbers::pi);
  const int turns = turning <= arc.to ? 1 + static_cast<int>((arc.to - turning) / std::numbers::pi) : 0;
  for (int i = 0; i < turns; ++i) take(turning + i * std::numbers::pi);
  const auto at = [&](double place) -> FlatPoint {
    return {arc.centre.x + place * way.x, arc.centre.y + place * way.y};
  };
  return lineBetween(at(low), at(high));
}

// u and v are any two conjugate half diameters.
std::optional<FlatCurve> arcOf(FlatArc arc) {
  const double size = std::max(lengthOf(arc.u), lengthOf(arc.v));
  if (size < kNothing) return std::nullopt;
  if (std::fabs(cross(arc.u, arc.v)) < kFlat * size * size) return flattened(arc);
  if (cross(arc.u, arc.v) < 0) {
    arc.v = {-arc.v.x, -arc.v.y};
    arc = {arc.centre, arc.u, arc.v, -arc.to, -arc.from};
  }
  const double uu = dot(arc.u, arc.u), vv = dot(arc.v, arc.v), uv = dot(arc.u, arc.v);
  const bool isRound = std::fabs(uv) < 1e-9 * uu && std::fabs(uu - vv) < 1e-9 * uu;
  const double turn = isRound ? 0 : std::atan2(2 * uv, uu - vv) / 2, c = std::cos(turn), s = std::sin(turn);
  const FlatPoint u{c * arc.u.x + s * arc.v.x, c * arc.u.y + s * arc.v.y};
  FlatPoint v{c * arc.v.x - s * arc.u.x, c * arc.v.y - s * arc.u.y};
  if (isRound) v = {-u.y, u.x};
  return FlatArc{arc.centre, u, v, arc.from - turn, arc.to - turn};
}

// The circle through three points; nothing where they lie on a line.
std::optional<FlatArc> circleThrough(const FlatPoint& a, const FlatPoint& b, const FlatPoint& c) {
  const FlatPoint ab = b - a, ac = c - a;
  const double area = 2 * cross(ab, ac);
  if (std::fabs(area) < kNothing * kNothing) return std::nullopt;
  const FlatPoint centre{a.x + (ac.y * dot(ab, ab) - ab.y * dot(ac, ac)) / area,
                         a.y + (ab.x * dot(ac, ac) - ac.x * dot(ab, ab)) / area};
  const double radius = lengthOf(a - centre);
  if (!(radius < kFarthestCentre)) return std::nullopt;
  return FlatArc{centre, {radius, 0}, {0, radius}, 0, kTurn};
}

// What the points are, in their order; nothing where they are neither.
std::optional<FlatCurve> simpleThrough(const std::vector<FlatPoint>& points) {
  const FlatPoint &first = points.front(), &last = points.back();
  const FlatPoint way = last - first;
  const double length = lengthOf(way);
  const auto isOnLine = [&](const FlatPoint& p) {
    const double along = dot(p - first, way) / length;
    return std::fabs(cross(way, p - first)) / length < kMostOff && along > -kMostOff && along < length + kMostOff;
  };
  if (length > kMostOff && std::ranges::all_of(points, isOnLine)) return FlatLine{first, last};
  const std::size_t third = points.size() / 3;
  const auto circle = circleThrough(first, points[third], points[2 * third]);
  if (!circle) return std::nullopt;
  const double radius = lengthOf(circle->u), most = std::min(kMostOff, kAlike * radius);
  const auto angle = [&](const FlatPoint& p) { return std::atan2(p.y - circle->centre.y, p.x - circle->centre.x); };
  double turned = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (std::fabs(lengthOf(points[i] - circle->centre) - radius) > most) return std::nullopt;
    if (i > 0) turned += std::remainder(angle(points[i]) - angle(points[i - 1]), kTurn);
  }
  FlatArc arc = *circle;
  arc.from = turned > 0 ? angle(first) : angle(first) + turned;
  arc.to = arc.from + std::min(std::fabs(turned), kTurn);
  return arc;
}

}  // namespace

Paper::Paper(const creo::ProTransform& screen, double mm) : scale(mm) {
  const gp_Ax3 axes(gp_Pnt(), direction(screen.zAxis), direction(screen.xAxis));
  x = axes.XDirection();
  y = axes.YDirection();
  z = axes.Direction();
}

FlatPoint Paper::at(const gp_XYZ& p) const { return {scale * x.XYZ().Dot(p), scale * y.XYZ().Dot(p)}; }

std::optional<FlatCurve> flatCurve(const BRepAdaptor_Curve& curve, const Paper& paper) {
  const double first = curve.FirstParameter(), last = curve.LastParameter();
  const auto arc = [&](const gp_Pnt& centre, const gp_XYZ& u, const gp_XYZ& v) {
    return arcOf({paper.at(centre), paper.at(u), paper.at(v), first, last});
  };
  switch (curve.GetType()) {
    case GeomAbs_Line:
      return lineBetween(paper.at(curve.Value(first)), paper.at(curve.Value(last)));
    case GeomAbs_Circle: {
      const gp_Circ circle = curve.Circle();
      return arc(circle.Location(), circle.XAxis().Direction().XYZ() * circle.Radius(),
                 circle.YAxis().Direction().XYZ() * circle.Radius());
    }
    case GeomAbs_Ellipse: {
      const gp_Elips ellipse = curve.Ellipse();
      return arc(ellipse.Location(), ellipse.XAxis().Direction().XYZ() * ellipse.MajorRadius(),
                 ellipse.YAxis().Direction().XYZ() * ellipse.MinorRadius());
    }
    default:
      break;
  }
  std::vector<FlatPoint> points;
  for (int i = 0; i <= kProbes; ++i) points.push_back(paper.at(curve.Value(first + (last - first) * i / kProbes)));
  if (auto simple = simpleThrough(points)) return simple;
  const GCPnts_TangentialDeflection chain(curve, kChainTurn, kChain / paper.scale);
  FlatPath path;
  for (int i = 1; i <= chain.NbPoints(); ++i) path.points.push_back(paper.at(chain.Value(i)));
  if (path.points.size() < 2) return std::nullopt;
  return path;
}

}  // namespace headless::geometry
