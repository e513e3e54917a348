// Closed chains of flat curves, and hatching within them.
#pragma once

#include <vector>

#include "headless/geometry/sight.h"

namespace headless::geometry {

// A corner of a closed line, and how the way to the next one bends: the tangent of a quarter of the arc's angle,
// counter-clockwise positive; 0: it is straight.
struct BentCorner {
  FlatPoint at;
  double bend = 0;
};
// The loop with circles as such; ellipses become lines within 0.01. Whole circles are two halves.
std::vector<BentCorner> cornersOf(const FlatLoop& loop);

// Parallel lines, as many as there is room for: through the origin and every `spacing`, `angle` degrees from the x
// axis.
struct HatchLines {
  double angle = 45, spacing = 3;
  double shift = 0;  // of the first one, across
};
// Their pieces within an odd number of the loops. None for a spacing that isn't over 0, or for which there would be
// more than a hundred thousand.
std::vector<FlatLine> hatched(const std::vector<FlatLoop>& loops, const HatchLines& lines);

}  // namespace headless::geometry
