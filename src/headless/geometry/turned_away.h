// Inside this folder, for kelvane-import: faces of bodies that look away from the viewer.
#pragma once

#include <TopoDS_Shape.hxx>
#include <map>
#include <utility>
#include <vector>

#include "headless/geometry/flat_projection.h"

namespace headless::geometry {

// Is a solid bounded by closed surfaces, with its material inside of them? What stands in several places is looked at
// once.
class ClosedSolids {
 public:
  bool has(const TopoDS_Shape& solid);

 private:
  std::map<std::pair<const TopoDS_TShape*, TopAbs_Orientation>, bool> known_;
};

// All shapes as one, without the faces of solids that look away from the viewer or are seen on their edge. Where no
// hidden lines are asked for those show nothing that faces which look to the viewer don't show: an edge between two of
// them lies behind its own body, or upon an edge that is nearer. Faces that aren't planes, cylinders or cones stay,
// those of surfaces that aren't closed, and those that go on without a bend in one that stays: alone the edge between
// them would be a sharp one. Needs the shapes' edges to know how they go on (BRepLib::EncodeRegularity).
TopoDS_Shape lookingToViewer(const std::vector<TopoDS_Shape>& shapes, const Paper& paper, ClosedSolids& closed);
// All shapes as one. The library works out many shapes pair by pair, and some edges of a pair many times.
TopoDS_Shape asOne(const std::vector<TopoDS_Shape>& shapes);

}  // namespace headless::geometry
