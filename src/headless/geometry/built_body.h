// Inside this folder only: what a body is.
#pragma once

#include <TopoDS_Shape.hxx>
#include <optional>
#include <utility>
#include <vector>

#include "headless/geometry/extent.h"
#include "headless/geometry/face.h"
#include "headless/geometry/measured.h"

namespace headless::geometry {

class Body {
 public:
  explicit Body(TopoDS_Shape made) : shape(std::move(made)) {}
  const TopoDS_Shape shape;
  // Worked out when first asked for.
  mutable std::optional<Measured> measured;
  mutable std::optional<Extent> extent;
  mutable std::optional<std::vector<Face>> faces;
};

}  // namespace headless::geometry
