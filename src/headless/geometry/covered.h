// Inside this folder, for kelvane-import: bodies of which nothing is seen.
#pragma once

#include <TopoDS_Shape.hxx>
#include <vector>

#include "headless/geometry/flat_projection.h"

namespace headless::geometry {

// Without the shapes that stand behind one flat face of another one as a whole, box and all: nothing of those can be
// seen, whatever they are. Others that are covered by several faces together stay.
std::vector<TopoDS_Shape> withoutCovered(const std::vector<TopoDS_Shape>& shapes, const Paper& paper);

// Those that can't hide anything of one another are in groups of their own: what stands apart on paper.
std::vector<std::vector<TopoDS_Shape>> apartOnPaper(const std::vector<TopoDS_Shape>& shapes, const Paper& paper);

}  // namespace headless::geometry
