#include "headless/geometry/faces.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <gp_Ax2.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Lin.hxx>
#include <gp_Pln.hxx>
#include <gp_Sphere.hxx>

#include "headless/geometry/built_body.h"
#include "headless/geometry/library_failure.h"
#include "headless/geometry/shapes.h"

namespace headless::geometry {
namespace {

// Of two edges as long as one another, but for rounding, the first counts.
constexpr double kLonger = 1 + 1e-9;

creo::ProVector vector(const gp_XYZ& v) { return {v.X() + 0.0, v.Y() + 0.0, v.Z() + 0.0}; }  // never -0

// The direction of a face's longest straight edge; nothing where it has none.
std::optional<gp_Dir> longestEdge(const TopoDS_Face& face) {
  double longest = 0;
  std::optional<gp_Dir> direction;
  for (TopExp_Explorer at(face, TopAbs_EDGE); at.More(); at.Next()) {
    const BRepAdaptor_Curve curve(TopoDS::Edge(at.Current()));
    if (curve.GetType() != GeomAbs_Line) continue;
    const double length = std::abs(curve.LastParameter() - curve.FirstParameter());
    if (!(length > longest * kLonger)) continue;
    longest = length;
    direction = curve.Line().Direction();
  }
  return direction;
}

// A surface's own axes say more of who made it than of its shape: an edge does better.
creo::ProTransform planeOf(const TopoDS_Face& face, const gp_Pln& plane) {
  gp_Dir normal = plane.Position().Direction();
  if (!plane.Direct()) normal.Reverse();  // where the library's axes are left-handed they cross the other way
  if (face.Orientation() == TopAbs_REVERSED) normal.Reverse();
  const gp_Ax2 axes(plane.Location(), normal, longestEdge(face).value_or(plane.Position().XDirection()));
  return {vector(axes.XDirection().XYZ()), vector(axes.YDirection().XYZ()), vector(axes.Direction().XYZ()),
          vector(axes.Location().XYZ())};
}

Face faceOf(const TopoDS_Face& face) {
  const BRepAdaptor_Surface surface(face, false);
  switch (surface.GetType()) {
    case GeomAbs_Plane:
      return {planeOf(face, surface.Plane()), {}};
    case GeomAbs_Cylinder:
      return {{}, surface.Cylinder().Radius() * 2};
    case GeomAbs_Sphere:
      return {{}, surface.Sphere().Radius() * 2};
    default:
      return {};
  }
}

}  // namespace

const std::vector<Face>& faces(const Body& body) {
  if (!body.faces) {
    guarded([&body] {
      std::vector<Face> faces;
      for (TopExp_Explorer at(body.shape, TopAbs_FACE); at.More(); at.Next())
        faces.push_back(faceOf(TopoDS::Face(at.Current())));
      body.faces = std::move(faces);
    });
  }
  return *body.faces;
}

}  // namespace headless::geometry
