// Inside this folder only: what faces enclose.
#pragma once

#include <TopoDS_Face.hxx>
#include <gp_Pnt.hxx>
#include <gp_XYZ.hxx>

namespace headless::geometry {

// Integrals are known this well, relative to what a face adds to them.
inline constexpr double kPrecision = 1e-9;

// The cones from one point to faces, turned by the side that a face looks to: around a body they sum up to it. Lengths
// are those of the shape.
class Cones {
 public:
  // apex: anywhere; near the body nothing is lost to rounding.
  explicit Cones(const gp_Pnt& apex) : apex_(apex) {}
  // Planes, cylinders, cones, spheres and tori are integrated along their edges, at a cost of the edges' count; all
  // other surfaces by the library, until it is as precise. A face that looks to no side counts with its area alone.
  // Throws Standard_Failure.
  void add(const TopoDS_Face& face);

  [[nodiscard]] double volume() const { return volume_; }
  [[nodiscard]] double area() const { return area_; }
  // Of the volume, which is not 0.
  [[nodiscard]] gp_Pnt centre() const { return apex_.XYZ() + moment_ / volume_; }

 private:
  void addByLibrary(const TopoDS_Face& face);

  gp_Pnt apex_;
  double volume_ = 0, area_ = 0;
  gp_XYZ moment_;  // of the volume, about the apex
};

}  // namespace headless::geometry
