#include "headless/geometry/face_prints.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>

#include "headless/geometry/built_body.h"
#include "headless/geometry/library_failure.h"

namespace headless::geometry {

std::vector<FacePrint> facePrints(const Body& body) {
  std::vector<FacePrint> prints;
  guarded([&] {
    for (TopExp_Explorer at(body.shape, TopAbs_FACE); at.More(); at.Next()) {
      const TopoDS_Face face = TopoDS::Face(at.Current());
      GProp_GProps measured;
      BRepGProp::SurfaceProperties(face, measured);
      const gp_Pnt centre = measured.CentreOfMass();
      prints.push_back({static_cast<int>(BRepAdaptor_Surface(face, false).GetType()),
                        measured.Mass(),
                        {centre.X(), centre.Y(), centre.Z()}});
    }
  });
  return prints;
}

}  // namespace headless::geometry
