#include "headless/geometry/integrals.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Curve2d.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepGProp_Domain.hxx>
#include <BRepGProp_Face.hxx>
#include <BRepGProp_Sinert.hxx>
#include <BRepGProp_Vinert.hxx>
#include <BRep_Tool.hxx>
#include <ElSLib.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <gp_Pln.hxx>
#include <math.hxx>
#include <math_Vector.hxx>
#include <numbers>
#include <optional>

namespace headless::geometry {
namespace {

bool looksToASide(const TopoDS_Shape& shape) {
  return shape.Orientation() == TopAbs_FORWARD || shape.Orientation() == TopAbs_REVERSED;
}

// ---- sums at points

// What is integrated: volume, area, and the three moments.
using Values = std::array<double, 5>;
constexpr std::size_t kArea = 1;

void addTimes(Values& sum, const Values& values, double weight) {
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += weight * values[i];
}

// Points and weights between -1 and 1 that are exact for polynomials of the degree 2 * kOrder - 1.
template <int kOrder>
struct Gauss {
  std::array<double, kOrder> points, weights;
  Gauss() {
    math_Vector at(1, kOrder), weight(1, kOrder);
    math::GaussPoints(kOrder, at);
    math::GaussWeights(kOrder, weight);
    std::copy_n(&at(1), kOrder, points.begin());
    std::copy_n(&weight(1), kOrder, weights.begin());
  }
};

template <int kOrder, class At>
Values overPiece(double from, double to, At at) {
  static const Gauss<kOrder> gauss;
  const double middle = (from + to) / 2, half = (to - from) / 2;
  Values sum{};
  for (int i = 0; i < kOrder; ++i) addTimes(sum, at(middle + half * gauss.points[i]), half * gauss.weights[i]);
  return sum;
}

// Cubic at most.
constexpr int kCubic = 2;
// Sines and cosines of five times an angle, over a quarter of a turn: as exact as numbers are.
constexpr int kQuarterTurn = 10;
constexpr double kQuarter = std::numbers::pi / 2;

// In pieces that turn by a quarter at most. turn: the angle between the ends.
template <class At>
Values overQuarters(double from, double to, double turn, At at) {
  const int count = std::max(1, static_cast<int>(std::ceil(turn / kQuarter - 1e-9)));
  Values sum{};
  for (int i = 0; i < count; ++i)
    addTimes(sum, overPiece<kQuarterTurn>(from + (to - from) * i / count, from + (to - from) * (i + 1) / count, at), 1);
  return sum;
}

// ---- a surface

// In its parameters u and v. What it adds is a polynomial of v, of degree 3 at most, on all but spheres and tori.
class Surface {
 public:
  Surface(const TopoDS_Face& face, const gp_Pnt& apex) : at_(face, false), apex_(apex.XYZ()) {}
  [[nodiscard]] GeomAbs_SurfaceType type() const { return at_.GetType(); }
  [[nodiscard]] gp_Pln plane() const { return at_.Plane(); }
  [[nodiscard]] bool isFlat() const { return type() == GeomAbs_Plane; }
  // Is v an angle too?
  [[nodiscard]] bool bendsTwice() const { return type() == GeomAbs_Sphere || type() == GeomAbs_Torus; }

  // At u, between two v.
  [[nodiscard]] Values between(double u, double from, double to) const {
    const auto here = [this, u](double v) { return at(u, v); };
    return bendsTwice() ? overQuarters(from, to, std::abs(to - from), here) : overPiece<kCubic>(from, to, here);
  }

 private:
  [[nodiscard]] Values at(double u, double v) const {
    gp_Pnt point;
    gp_Vec alongU, alongV;
    at_.D1(u, v, point, alongU, alongV);
    const gp_XYZ normal = alongU.XYZ().Crossed(alongV.XYZ());
    const gp_XYZ from = point.XYZ() - apex_;
    const double cone = from.Dot(normal) / 3;
    const gp_XYZ moment = from * (cone * 3 / 4);
    return {cone, normal.Modulus(), moment.X(), moment.Y(), moment.Z()};
  }

  BRepAdaptor_Surface at_;
  gp_XYZ apex_;
};

// ---- its edges

struct OnEdge {
  double u, v, uSpeed;
};

// An edge in the parameters of its face's surface.
class EdgeOnPlane {
 public:
  EdgeOnPlane(const TopoDS_Edge& edge, const gp_Pln& plane) : curve_(edge), plane_(plane) {}
  [[nodiscard]] const BRepAdaptor_Curve& curve() const { return curve_; }
  [[nodiscard]] OnEdge at(double t) const {
    gp_Pnt point;
    gp_Vec speed;
    curve_.D1(t, point, speed);
    double u = 0, v = 0;
    ElSLib::Parameters(plane_, point, u, v);
    return {u, v, speed.Dot(plane_.Position().XDirection())};
  }

 private:
  BRepAdaptor_Curve curve_;
  gp_Pln plane_;
};
class EdgeOnSurface {
 public:
  EdgeOnSurface(const TopoDS_Edge& edge, const TopoDS_Face& face) : curve_(edge, face) {}
  [[nodiscard]] const BRepAdaptor_Curve2d& curve() const { return curve_; }
  [[nodiscard]] OnEdge at(double t) const {
    gp_Pnt2d point;
    gp_Vec2d speed;
    curve_.D1(t, point, speed);
    return {point.X(), point.Y(), speed.X()};
  }

 private:
  BRepAdaptor_Curve2d curve_;
};

// A piece of a curve of which nothing is known but that it is smooth: cut in two until the halves have the area that
// the whole had.
template <class At>
Values untilSure(double from, double to, const Values& whole, int cuts, At at) {
  const double middle = (from + to) / 2;
  const Values first = overPiece<kQuarterTurn>(from, middle, at), second = overPiece<kQuarterTurn>(middle, to, at);
  Values sum = first;
  addTimes(sum, second, 1);
  constexpr double kSure = kPrecision / 100;  // moments are less sure than areas
  const double off = std::abs(sum[kArea] - whole[kArea]);
  if (cuts == 0 || off <= kSure * (std::abs(first[kArea]) + std::abs(second[kArea]))) return sum;
  sum = untilSure(from, middle, first, cuts - 1, at);
  addTimes(sum, untilSure(middle, to, second, cuts - 1, at), 1);
  return sum;
}

constexpr int kMostCuts = 7;

template <class Curve, class At>
Values alongAny(const Curve& curve, At at) {
  TColStd_Array1OfReal ends(1, curve.NbIntervals(GeomAbs_CN) + 1);
  curve.Intervals(ends, GeomAbs_CN);
  Values sum{};
  for (int i = ends.Lower(); i < ends.Upper(); ++i)
    addTimes(sum, untilSure(ends(i), ends(i + 1), overPiece<kQuarterTurn>(ends(i), ends(i + 1), at), kMostCuts, at), 1);
  return sum;
}

// What lies between an edge and a level of v, counted against the edge's way.
template <class Edge>
Values along(const Edge& edge, const Surface& surface, double level) {
  const auto at = [&](double t) {
    const OnEdge on = edge.at(t);
    Values sum{};
    if (on.uSpeed != 0) addTimes(sum, surface.between(on.u, level, on.v), -on.uSpeed);
    return sum;
  };
  const auto& curve = edge.curve();
  const double from = curve.FirstParameter(), to = curve.LastParameter();
  const bool turns = curve.GetType() == GeomAbs_Circle || curve.GetType() == GeomAbs_Ellipse;
  if (turns && surface.isFlat()) return overQuarters(from, to, to - from, at);
  if (curve.GetType() != GeomAbs_Line) return alongAny(curve, at);
  if (surface.isFlat()) return overPiece<kCubic>(from, to, at);
  const OnEdge first = edge.at(from), last = edge.at(to);
  const double turn = std::abs(last.u - first.u) + (surface.bendsTwice() ? std::abs(last.v - first.v) : 0);
  return overQuarters(from, to, turn, at);
}

// Green's theorem, in u and v: what a face adds is what its edges do. Nothing where the face must be left to the
// library.
std::optional<Values> byEdges(const TopoDS_Face& any, const gp_Pnt& apex) {
  const TopoDS_Face face = TopoDS::Face(any.Oriented(TopAbs_FORWARD));
  const Surface surface(face, apex);
  if (surface.type() > GeomAbs_Torus) return std::nullopt;  // those before are the ones that are known
  // Within the face, so that the tip of a cone isn't between it and an edge.
  std::optional<double> level;
  Values sum{};
  const auto add = [&](const auto& edge, double way) {
    if (!level) level = edge.at(edge.curve().FirstParameter()).v;
    addTimes(sum, along(edge, surface, *level), way);
  };
  for (TopExp_Explorer at(face, TopAbs_EDGE); at.More(); at.Next()) {
    const TopoDS_Edge& edge = TopoDS::Edge(at.Current());
    if (!looksToASide(edge)) continue;
    const double way = edge.Orientation() == TopAbs_FORWARD ? 1 : -1;
    double from = 0, to = 0;
    if (surface.isFlat() && BRep_Tool::IsGeometric(edge) && !BRep_Tool::Degenerated(edge))
      add(EdgeOnPlane(edge, surface.plane()), way);
    else if (!surface.isFlat() && !BRep_Tool::CurveOnSurface(edge, face, from, to).IsNull())
      add(EdgeOnSurface(edge, face), way);
    else
      return std::nullopt;
  }
  if (!level) return std::nullopt;
  return sum;
}

}  // namespace

void Cones::addByLibrary(const TopoDS_Face& face) {
  BRepGProp_Face surface;
  surface.Load(face);
  BRepGProp_Domain edges(face);
  const BRepGProp_Sinert area(surface, edges, apex_, kPrecision);
  area_ += area.Mass();
  if (!looksToASide(face)) return;
  edges.Init();
  const BRepGProp_Vinert cone(surface, edges, apex_, kPrecision);
  volume_ += cone.Mass();
  moment_ += (cone.CentreOfMass().XYZ() - apex_.XYZ()) * cone.Mass();
}

void Cones::add(const TopoDS_Face& face) {
  const std::optional<Values> values = byEdges(face, apex_);
  if (!values) {
    addByLibrary(face);
    return;
  }
  const auto& [volume, area, x, y, z] = *values;
  area_ += std::abs(area);
  if (!looksToASide(face)) return;
  const double side = face.Orientation() == TopAbs_FORWARD ? 1 : -1;
  volume_ += side * volume;
  moment_ += gp_XYZ(x, y, z) * side;
}

}  // namespace headless::geometry
