// The faces of a body, as planes and round surfaces.
#pragma once

#include <optional>
#include <vector>

#include "creo/ProTransform.h"
#include "headless/geometry/body.h"

namespace headless::geometry {

struct Face {
  // Of a plane: its origin, z out of the body, x along its longest straight edge, where it has one.
  std::optional<creo::ProTransform> plane;
  // Of a cylinder or a sphere.
  std::optional<double> diameter;
};
// Looked at once, then kept. Throws std::runtime_error for what the library can't tell.
const std::vector<Face>& faces(const Body& body);

}  // namespace headless::geometry
