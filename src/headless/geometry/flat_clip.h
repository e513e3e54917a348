// Curves within bounds.
#pragma once

#include <vector>

#include "headless/geometry/flat_curve.h"

namespace headless::geometry {

// The inside of a circle, or what lies on one side of an upright or level line.
struct FlatBound {
  enum class Kind { circle, right, left, above, below } kind = Kind::circle;
  FlatPoint centre;   // of the circle
  double radius = 0;  // of the circle; else where the line lies
};
// The pieces of the curve within the bound, in their order, arcs as arcs.
std::vector<FlatCurve> within(const FlatCurve& curve, const FlatBound& bound);

}  // namespace headless::geometry
