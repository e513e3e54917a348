// Bodies seen from one side, as lines on paper: what a view of a drawing shows.
#pragma once

#include "headless/geometry/sight.h"

namespace headless::geometry {

// By the library's hidden-line removal. Circles stay circles; curves that are neither lines nor arcs are chains of
// lines within 0.01 mm on paper. Exact edges have a budget of time (foreign_place.h); past it, and where the library
// fails or sees nothing, they are those of facets. What was seen, or can't be, is kept by its bodies and settings,
// unless the program that works it out doesn't start. Bodies that others cover as a whole are left out where no hidden
// lines are asked for. No bodies: no curves, and no reason.
Seen seen(const Sight& sight);
// Works out several views side by side and keeps them, so that each is there at once when it is asked for.
void seeAhead(const std::vector<Sight>& sights);
// Starts the programs that do so, which takes them a while, in which the bodies can be built.
void readyToSeeAhead();
// Nothing is kept any more: each view is worked out again, by the program and within the time that hold now.
void forgetSeen();

}  // namespace headless::geometry
