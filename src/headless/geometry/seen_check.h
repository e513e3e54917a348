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
  // The paper in kCells columns and rows; a place beyond is in the last.
  static constexpr int kCells = 64;
  static std::size_t cellOf(double at, double from, double to);
  [[nodiscard]] std::size_t column(double x) const { return cellOf(x, box_.left, box_.right); }
  [[nodiscard]] std::size_t row(double y) const { return cellOf(y, box_.low, box_.high); }
  void sortIntoCells();

  const Paper& paper_;
  std::vector<Face> faces_;
  FlatBox box_;
  std::vector<std::vector<std::size_t>> cells_;  // the faces that reach into each, row by row
  double size_ = 0;                              // of all there is
};

}  // namespace headless::geometry
