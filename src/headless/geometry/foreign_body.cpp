#include "headless/geometry/foreign_body.h"

#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_MakeSolid.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRepGProp_Domain.hxx>
#include <BRepGProp_Face.hxx>
#include <BRepGProp_Vinert.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shell.hxx>
#include <algorithm>
#include <cmath>

#include "headless/geometry/shapes.h"
#include "text/format.h"

namespace headless::geometry {
namespace {

// ---- how large it is

struct Box {
  gp_Pnt centre;
  double diagonal = 0;
};
Box boxOf(const TopoDS_Shape& shape) {
  Bnd_Box box;
  BRepBndLib::Add(shape, box, false);
  if (box.IsVoid()) throw ShapeFault{L"a body of it is empty"};
  const gp_Pnt low = box.CornerMin(), high = box.CornerMax();
  const double diagonal = low.Distance(high);
  // Not a number is no less than anything.
  const bool isNear = !box.IsOpen() && diagonal < kFarthest && low.XYZ().Modulus() < kFarthest;
  if (!isNear) throw ShapeFault{L"a body of it reaches farther than any part"};
  return {gp_Pnt((low.XYZ() + high.XYZ()) / 2), diagonal};
}

// ---- loose faces

// Of what faces may be apart and still belong together: at least, as far as the file's own resolution lies between, and
// at most, each as a part of the box.
constexpr double kClosest = 1e-7, kUsual = 1e-5, kWidest = 1e-3;
constexpr double kWider = 10;

// What sewing with growing tolerance makes of them: the first that leaves no edge open, else that with the fewest.
TopoDS_Shape sewn(const std::vector<TopoDS_Shape>& faces, double tolerance, double widest) {
  TopoDS_Shape best;
  int fewest = 0;
  for (; tolerance <= widest && (best.IsNull() || fewest > 0); tolerance *= kWider) {
    BRepBuilderAPI_Sewing sewing(tolerance);
    for (const TopoDS_Shape& face : faces) sewing.Add(face);
    sewing.Perform();
    if (sewing.SewedShape().IsNull() || (!best.IsNull() && sewing.NbFreeEdges() >= fewest)) continue;
    best = sewing.SewedShape();
    fewest = sewing.NbFreeEdges();
  }
  return best;
}

// A face that met no other one is a shell too.
std::vector<TopoDS_Shell> shellsOf(const TopoDS_Shape& shape) {
  std::vector<TopoDS_Shell> shells;
  for (TopExp_Explorer at(shape, TopAbs_SHELL); at.More(); at.Next()) shells.push_back(TopoDS::Shell(at.Current()));
  const BRep_Builder builder;
  for (TopExp_Explorer at(shape, TopAbs_FACE, TopAbs_SHELL); at.More(); at.Next()) {
    builder.MakeShell(shells.emplace_back());
    builder.Add(shells.back(), at.Current());
  }
  return shells;
}

// ---- does it hold a room?

double volumeOf(const TopoDS_Shape& solid) {
  GProp_GProps volume;
  BRepGProp::VolumeProperties(solid, volume);
  return volume.Mass();
}
double areaOf(const TopoDS_Shape& solid) {
  GProp_GProps area;
  BRepGProp::SurfaceProperties(solid, area);
  return area.Mass();
}

// The room between a solid's faces and a point. Where the faces close it is the same for each point.
double roomFrom(const TopoDS_Shape& solid, const gp_Pnt& point) {
  double room = 0;
  for (TopExp_Explorer at(solid, TopAbs_FACE); at.More(); at.Next()) {
    if (at.Current().Orientation() != TopAbs_FORWARD && at.Current().Orientation() != TopAbs_REVERSED) continue;
    BRepGProp_Face face;
    face.Load(TopoDS::Face(at.Current()));
    BRepGProp_Domain domain(TopoDS::Face(at.Current()));
    room += BRepGProp_Vinert(face, domain, point).Mass();
  }
  return room;
}

// How much of the surface is missing, or looks the wrong way: the sum of all faces, each as a vector that looks out of
// it, is nothing around a room. As a part of the area.
double openPart(const TopoDS_Shape& solid, const Box& box, double area) {
  const double room = roomFrom(solid, box.centre);
  double squares = 0;
  for (const gp_Vec& way : {gp_Vec(1, 0, 0), gp_Vec(0, 1, 0), gp_Vec(0, 0, 1)}) {
    const double off = 3 * (roomFrom(solid, box.centre.Translated(way * box.diagonal)) - room) / box.diagonal;
    squares += off * off;
  }
  return std::sqrt(squares) / area;
}
// How far an edge lies off one of its faces at most: the library takes each edge for one of the face and widens its
// tolerance. A cylinder between circles of another radius has no open part, but the volume of its own radius. As a part
// of the box.
double widestGap(const TopoDS_Shape& solid, const Box& box) {
  double widest = 0;
  for (TopExp_Explorer at(solid, TopAbs_EDGE); at.More(); at.Next())
    widest = std::max(widest, BRep_Tool::Tolerance(TopoDS::Edge(at.Current())));
  return widest / box.diagonal;
}
// More of either is no error of the summing up; with more still the volume means nothing.
constexpr double kDoubtful = 1e-3, kOpen = 1e-2;
// Less volume, as a part of that of a cube with the box's diagonal as side, is none.
constexpr double kLeastRoom = 1e-12;

bool isClosed(const TopoDS_Shape& solid) {
  bool any = false;
  for (TopExp_Explorer at(solid, TopAbs_SHELL); at.More(); at.Next(), any = true)
    if (!BRep_Tool::IsClosed(at.Current())) return false;
  return any;
}

// The solid, its faces looking out of it. doubtful: counts it where its faces hardly meet.
TopoDS_Solid withRoom(const TopoDS_Solid& solid, int& doubtful) {
  const Box box = boxOf(solid);
  if (!isClosed(solid)) throw ShapeFault{L"a body of it isn't closed: its volume is unknown"};
  const double volume = volumeOf(solid), area = areaOf(solid);
  if (!std::isfinite(volume) || !std::isfinite(area)) throw ShapeFault{L"the volume of a body isn't finite"};
  if (!(std::abs(volume) > kLeastRoom * box.diagonal * box.diagonal * box.diagonal))
    throw ShapeFault{L"a body of it has no volume"};
  const double open = std::max(openPart(solid, box, area), widestGap(solid, box));
  if (!(open < kOpen)) throw ShapeFault{L"the faces of a body don't meet: its volume is unknown"};
  doubtful += open < kDoubtful ? 0 : 1;
  return volume > 0 ? solid : TopoDS::Solid(solid.Reversed());
}

// Faces that the shape check finds faulty, or the whole where it is none of them.
int faultyFaces(const TopoDS_Shape& shape) {
  const BRepCheck_Analyzer analyzer(shape);
  if (analyzer.IsValid()) return 0;
  TopTools_IndexedMapOfShape faces;
  TopExp::MapShapes(shape, TopAbs_FACE, faces);
  int count = 0;
  for (int i = 1; i <= faces.Extent(); ++i) count += analyzer.IsValid(faces(i)) ? 0 : 1;
  return std::max(count, 1);
}

std::wstring counted(int count, const wchar_t* entry, const wchar_t* several) {
  return text::format(L"%d %s", count, std::wstring(count == 1 ? entry : several));
}

}  // namespace

TopoDS_Shape ForeignBodies::take(const TopoDS_Shape& shape) {
  const BRep_Builder builder;
  TopoDS_Compound solids, quilts;
  builder.MakeCompound(solids);
  builder.MakeCompound(quilts);
  for (TopExp_Explorer at(shape, TopAbs_SOLID); at.More(); at.Next()) takeSolid(solids, TopoDS::Solid(at.Current()));
  takeLoose(solids, quilts, shape);
  for (TopExp_Explorer at(quilts, TopAbs_SHELL); at.More(); at.Next()) builder.Add(solids, at.Current());
  if (!TopExp_Explorer(solids, TopAbs_FACE).More()) return {};
  faulty_ += faultyFaces(solids);
  return solids;
}

void ForeignBodies::takeSolid(TopoDS_Compound& into, const TopoDS_Solid& solid) {
  BRep_Builder().Add(into, withRoom(solid, doubtful_));
}

void ForeignBodies::takeLoose(TopoDS_Compound& solids, TopoDS_Compound& quilts, const TopoDS_Shape& shape) {
  std::vector<TopoDS_Shape> faces;
  TopoDS_Compound all;
  const BRep_Builder builder;
  builder.MakeCompound(all);
  for (TopExp_Explorer at(shape, TopAbs_FACE, TopAbs_SOLID); at.More(); at.Next()) {
    faces.push_back(at.Current());
    builder.Add(all, at.Current());
  }
  if (faces.empty()) return;
  const double size = boxOf(all).diagonal;
  if (!(size > 0)) throw ShapeFault{L"its faces have no size"};
  const double tolerance = resolution_ > 0 ? std::clamp(resolution_, kClosest * size, kUsual * size) : kUsual * size;
  const TopoDS_Shape together = sewn(faces, tolerance, kWidest * size);
  if (together.IsNull()) throw ShapeFault{L"its faces can't be put together"};
  for (const TopoDS_Shell& shell : shellsOf(together)) {
    if (BRep_Tool::IsClosed(shell)) {
      takeSolid(solids, BRepBuilderAPI_MakeSolid(shell).Solid());
      continue;
    }
    builder.Add(quilts, shell);
    ++quilts_;
  }
}

std::vector<std::wstring> ForeignBodies::warnings() const {
  std::vector<std::wstring> all;
  if (faulty_ > 0) all.push_back(counted(faulty_, L"face fails", L"faces fail") + L" the shape check");
  if (doubtful_ > 0) all.push_back(counted(doubtful_, L"body has", L"bodies have") + L" faces that hardly meet");
  if (quilts_ > 0)
    all.push_back(counted(quilts_, L"open shell is kept as quilt", L"open shells are kept as quilts") +
                  L" without volume");
  return all;
}

}  // namespace headless::geometry
