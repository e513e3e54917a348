// Inside this folder, for kelvane-import: bodies that a plane cuts.
#pragma once

#include <TopoDS_Shape.hxx>
#include <vector>

#include "headless/geometry/flat_projection.h"

namespace headless::geometry {

struct CutShapes {
  std::vector<TopoDS_Shape> shapes;  // what is left of them
  std::vector<SeenCut> cuts;         // where material is cut, on paper
};
// Takes what lies before the sight's plane, on the side that its normal leads to, from the shapes of the sight's
// bodies, each in its place. Those that stay whole go only where they lie before it as a whole. What just touches the
// plane isn't cut. Throws std::runtime_error where the library can't cut a body.
CutShapes cutShapes(const Sight& sight, const std::vector<TopoDS_Shape>& shapes, const Paper& paper);

}  // namespace headless::geometry
