// A face of a body, as a plane or a round surface.
#pragma once

#include <optional>

#include "creo/ProTransform.h"

namespace headless::geometry {

struct Face {
  // Of a plane: its origin, z out of the body, x along its longest straight edge, where it has one.
  std::optional<creo::ProTransform> plane;
  // Of a cylinder or a sphere.
  std::optional<double> diameter;
};

}  // namespace headless::geometry
