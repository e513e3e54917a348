// Inside this folder, for kelvane-import: is there a face before a point?
#pragma once

#include <IntCurvesFace_Intersector.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <memory>
#include <vector>

#include "headless/geometry/flat_projection.h"

namespace headless::geometry {

// Looks from the middle of an edge to the viewer, a little to both of its sides: it is hidden where faces stand before
// both. What the library tells of visible edges is held against it.
class SeenCheck {
 public:
  SeenCheck(const std::vector<TopoDS_Shape>& shapes, const Paper& paper);
  bool isBehindFaces(const BRepAdaptor_Curve& curve);

 private:
  struct Face {
    FlatBox box;
    double nearest = 0;  // along z
    TopoDS_Face face;
    std::unique_ptr<IntCurvesFace_Intersector> exact;  // made when first asked: it costs more than a question
  };
  bool isBehind(const gp_Pnt& point);

  const Paper& paper_;
  std::vector<Face> faces_;
  double size_ = 0;  // of all there is
};

}  // namespace headless::geometry
