// Inside this folder, for kelvane-import: the axes of round faces.
#pragma once

#include <TopoDS_Shape.hxx>
#include <vector>

#include "headless/geometry/flat_joiner.h"
#include "headless/geometry/flat_projection.h"

namespace headless::geometry {

// Marks the axes of what was drawn: a cross over circles that an axis leads away from, a line along round faces that
// are seen from the side. Faces of less than half a turn, as those of roundings, have none, nor has what is too small
// on paper to be marked.
void addAxes(FlatJoiner& lines, const std::vector<TopoDS_Shape>& shapes, const Paper& paper);
// Marks the pitch surfaces of gears: a circle, or a line on each side of the axis that reaches a little beyond the
// teeth. They are drawn as a whole, also where something stands before them; of a gear without its teeth only where its
// tip is drawn.
void addPitch(FlatJoiner& lines, const std::vector<PlacedBody>& bodies, const Paper& paper);

}  // namespace headless::geometry
