// Curves in the plane of a picture: lines, arcs of circles and ellipses, and what is none of these as a chain of lines.
#pragma once

#include <array>
#include <variant>
#include <vector>

namespace headless::geometry {

struct FlatPoint {
  double x = 0, y = 0;
};
struct FlatLine {
  FlatPoint from, to;
};
// centre + cos(t) * u + sin(t) * v, for t from `from` to `to`: counter-clockwise, in radians, at most one turn. v
// stands a quarter turn counter-clockwise from u and is no longer.
struct FlatArc {
  FlatPoint centre, u, v;
  double from = 0, to = 0;
};
struct FlatPath {
  std::vector<FlatPoint> points;
};
using FlatCurve = std::variant<FlatLine, FlatArc, FlatPath>;

double lengthOf(const FlatPoint& v);
FlatPoint pointAt(const FlatArc& arc, double t);
// Within a billionth.
bool isCircle(const FlatArc& arc);
bool isWhole(const FlatArc& arc);
// Ends included.
FlatCurve moved(const FlatCurve& curve, double x, double y);
// The arc as Bezier curves, each of four points and of at most a quarter turn; off by 3e-4 of the radius at most.
std::vector<std::array<FlatPoint, 4>> beziersOf(const FlatArc& arc);

struct FlatBox {
  double left = 0, low = 0, right = 0, high = 0;
  bool isEmpty = true;
  void take(const FlatPoint& p);
  void take(const FlatCurve& curve);
};

}  // namespace headless::geometry
