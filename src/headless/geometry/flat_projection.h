// Inside this folder, for kelvane-import: curves in space as curves on paper.
#pragma once

#include <BRepAdaptor_Curve.hxx>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <optional>

#include "headless/geometry/sight.h"

namespace headless::geometry {

// The paper in the picture's coordinates; z to the viewer.
class Paper {
 public:
  Paper(const creo::ProTransform& screen, double scale);
  gp_Dir x, y, z;
  double scale;
  [[nodiscard]] FlatPoint at(const gp_XYZ& p) const;
  [[nodiscard]] FlatPoint at(const gp_Pnt& p) const { return at(p.XYZ()); }
};

// The curve between its first and its last parameter: lines, circles and ellipses as such, as a line too where they
// are seen from the side; other curves as a line or an arc where they are one within a ten-thousandth, else as a chain
// of lines within 0.01 mm on paper. Nothing where it leads away from the viewer.
std::optional<FlatCurve> flatCurve(const BRepAdaptor_Curve& curve, const Paper& paper);

}  // namespace headless::geometry
