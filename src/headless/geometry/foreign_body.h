// Inside this folder, for kelvane-import: what a file of another system holds becomes bodies that can be relied on.
#pragma once

#include <TopoDS_Compound.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_Solid.hxx>
#include <string>
#include <vector>

namespace headless::geometry {

// No part of anybody reaches farther, in mm.
constexpr double kFarthest = 1e9;

// Makes the bodies of one file, and counts what of them is doubtful.
class ForeignBodies {
 public:
  // resolution: how far points of the file may be apart and still be meant as one, in mm; 0: the file doesn't say.
  explicit ForeignBodies(double resolution) : resolution_(resolution) {}
  // The solids, then the quilts, as one; null where there is no face. Loose faces are sewn: what closes around a room
  // becomes a solid. Throws ShapeFault for a solid that holds no room, or none that can be told.
  TopoDS_Shape take(const TopoDS_Shape& shape);
  // "2 faces fail the shape check"; empty where all is well.
  [[nodiscard]] std::vector<std::wstring> warnings() const;

 private:
  void takeSolid(TopoDS_Compound& into, const TopoDS_Solid& solid);
  void takeLoose(TopoDS_Compound& solids, TopoDS_Compound& quilts, const TopoDS_Shape& shape);

  double resolution_;
  int faulty_ = 0, doubtful_ = 0, quilts_ = 0;
};

}  // namespace headless::geometry
