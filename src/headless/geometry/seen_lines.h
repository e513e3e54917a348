// Inside this folder, for kelvane-import: what is seen of bodies, by the library's hidden-line removal.
#pragma once

#include "headless/geometry/sight.h"

namespace headless::geometry {

// Works at once and keeps nothing. No curves: the library sees nothing. Throws what the library throws. It writes
// into the bodies' shapes how edges go on: they must be nobody else's.
Seen seenLines(const Sight& sight, SeenBy by);

}  // namespace headless::geometry
