// The faces of a body, as planes and round surfaces.
#pragma once

#include <vector>

#include "headless/geometry/body.h"
#include "headless/geometry/face.h"

namespace headless::geometry {

// Looked at once, then kept. Throws std::runtime_error for what the library can't tell.
const std::vector<Face>& faces(const Body& body);

}  // namespace headless::geometry
