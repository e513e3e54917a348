// Inside this folder only: what a body is, and how single primitives become shapes.
#pragma once

#include <Standard_Failure.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "headless/geometry/body.h"
#include "headless/geometry/extent.h"
#include "headless/geometry/faces.h"

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

// The library's failures are no std::exception, which all others rely on.
template <class Work>
void guarded(Work work) {
  try {
    work();
  } catch (const Standard_Failure& failure) {
    throw std::runtime_error(failure.GetMessageString());
  }
}

// Why a primitive can't be built.
struct ShapeFault {
  std::wstring reason;
};
// Of any but an import. Throws ShapeFault, or a failure of the library. reach: a length that goes through all there is,
// for holes.
TopoDS_Shape shapeOf(const Primitive& primitive, double reach);
TopLoc_Location location(const creo::ProTransform& placement);
// The solids and quilts of a STEP file, in millimetres times scale, at a placement. Throws likewise. warnings: what is
// doubtful comes to them.
TopoDS_Shape imported(const Primitive& primitive, std::vector<std::wstring>& warnings);
// Null where there is none.
TopoDS_Shape solidsIn(const TopoDS_Shape& shape);

}  // namespace headless::geometry
