#include "headless/geometry/mesh.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Poly_PolygonOnTriangulation.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>

#include "headless/geometry/built_body.h"
#include "headless/geometry/library_failure.h"
#include "headless/geometry/shapes.h"

namespace headless::geometry {
namespace {

constexpr double kSmallAngle = 1e-6;   // radians
constexpr double kSmallLength = 1e-6;  // of the body's unit, as its accuracy is

MeshPoint meshPoint(const gp_XYZ& v) {
  return {static_cast<float>(v.X()), static_cast<float>(v.Y()), static_cast<float>(v.Z())};
}

std::size_t trianglesOf(const TopoDS_Face& face) {
  TopLoc_Location location;
  const Handle(Poly_Triangulation) triangles = BRep_Tool::Triangulation(face, location);
  return triangles.IsNull() ? 0 : static_cast<std::size_t>(triangles->NbTriangles());
}

// Do two faces lie on one plane or one cylinder?
bool goOnAsOne(const TopoDS_Face& a, const TopoDS_Face& b) {
  const BRepAdaptor_Surface first(a, false), second(b, false);
  if (first.GetType() != second.GetType()) return false;
  if (first.GetType() == GeomAbs_Plane) {
    const gp_Pln plane = second.Plane();
    return first.Plane().Axis().IsParallel(plane.Axis(), kSmallAngle) &&
           plane.Distance(first.Plane().Location()) < kSmallLength;
  }
  if (first.GetType() != GeomAbs_Cylinder) return false;
  const gp_Cylinder cylinder = second.Cylinder();
  return first.Cylinder().Axis().IsCoaxial(cylinder.Axis(), kSmallAngle, kSmallLength) &&
         std::abs(first.Cylinder().Radius() - cylinder.Radius()) < kSmallLength;
}

class Maker {
 public:
  void know(const TopoDS_Shape& shape) { TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, facesAt_); }
  // Each edge lies on two faces, and is taken from the first.
  void take(const TopoDS_Face& face) {
    ++number_;
    TopLoc_Location location;
    const Handle(Poly_Triangulation) triangles = BRep_Tool::Triangulation(face, location);
    if (triangles.IsNull()) return;
    const gp_Trsf& place = location.Transformation();
    const bool reversed = face.Orientation() == TopAbs_REVERSED;
    const auto first = static_cast<std::uint32_t>(mesh.points.size());
    for (int i = 1; i <= triangles->NbNodes(); ++i)
      mesh.points.push_back(meshPoint(triangles->Node(i).Transformed(place).XYZ()));
    mesh.normals.resize(mesh.points.size());
    mesh.faces.resize(mesh.points.size(), number_);
    for (int i = 1; i <= triangles->NbTriangles(); ++i) {
      int a = 0, b = 0, c = 0;
      triangles->Triangle(i).Get(a, b, c);
      if (reversed) std::swap(b, c);
      const auto at = [first](int node) { return first + static_cast<std::uint32_t>(node) - 1; };
      mesh.triangles.push_back({at(a), at(b), at(c)});
      addNormal(mesh.triangles.back());
    }
    for (std::size_t i = first; i < mesh.normals.size(); ++i) makeUnit(mesh.normals[i]);
    for (TopExp_Explorer at(face, TopAbs_EDGE); at.More(); at.Next())
      takeEdge(TopoDS::Edge(at.Current()), face, triangles, location, first);
  }
  Mesh mesh;

 private:
  // A point's normal is the mean of its triangles', by their areas.
  void addNormal(const std::array<std::uint32_t, 3>& triangle) {
    const auto at = [&](std::size_t corner) {
      const MeshPoint& p = mesh.points[triangle[corner]];
      return gp_XYZ(p[0], p[1], p[2]);
    };
    const gp_XYZ normal = (at(1) - at(0)).Crossed(at(2) - at(0));
    for (const std::uint32_t corner : triangle) {
      MeshPoint& sum = mesh.normals[corner];
      for (int i = 0; i < 3; ++i) sum[static_cast<std::size_t>(i)] += static_cast<float>(normal.Coord(i + 1));
    }
  }

  static void makeUnit(MeshPoint& v) {
    const float length = std::hypot(v[0], v[1], v[2]);
    if (length > 0)
      for (float& coordinate : v) coordinate /= length;
  }

  void takeEdge(const TopoDS_Edge& edge, const TopoDS_Face& face, const Handle(Poly_Triangulation) & triangles,
                const TopLoc_Location& location, std::uint32_t first) {
    // The seam of a round face is no edge that a person sees, nor is that of two faces which go on as one.
    if (BRep_Tool::Degenerated(edge) || BRep_Tool::IsClosed(edge, face)) return;
    if (isWithinOne(edge)) return;
    if (!seen_.Add(edge)) return;
    const Handle(Poly_PolygonOnTriangulation) line = BRep_Tool::PolygonOnTriangulation(edge, triangles, location);
    if (line.IsNull()) return;
    const auto at = [&](int i) { return mesh.points[first + static_cast<std::uint32_t>(line->Node(i)) - 1]; };
    for (int i = 1; i < line->NbNodes(); ++i) mesh.edges.push_back({at(i), at(i + 1)});
  }

  [[nodiscard]] bool isWithinOne(const TopoDS_Edge& edge) const {
    const TopTools_ListOfShape* faces = facesAt_.Seek(edge);
    return faces && faces->Extent() == 2 && goOnAsOne(TopoDS::Face(faces->First()), TopoDS::Face(faces->Last()));
  }

  TopTools_IndexedDataMapOfShapeListOfShape facesAt_;
  TopTools_MapOfShape seen_;
  int number_ = 0;
};

}  // namespace

Mesh mesh(const Body& body, double deflection, double turn) {
  Maker maker;
  guarded([&] {
    // The library keeps triangles in the shape, which many share and none may change.
    const TopoDS_Shape copy = BRepBuilderAPI_Copy(body.shape, false, false).Shape();
    maker.know(copy);
    const BRepMesh_IncrementalMesh meshed(copy, deflection > 0 ? deflection : 0.1, false, turn, false);
    for (TopExp_Explorer at(copy, TopAbs_FACE); at.More(); at.Next()) maker.take(TopoDS::Face(at.Current()));
    maker.mesh.closed = maker.mesh.triangles.size();
    for (TopExp_Explorer at(copy, TopAbs_FACE, TopAbs_SOLID); at.More(); at.Next())
      maker.mesh.closed -= trianglesOf(TopoDS::Face(at.Current()));
  });
  return std::move(maker.mesh);
}

}  // namespace headless::geometry
