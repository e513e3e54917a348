// Inside this folder only: how single primitives become shapes.
#pragma once

#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <string>
#include <vector>

#include "creo/ProTransform.h"
#include "headless/geometry/primitive.h"

namespace headless::geometry {

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
