#include "headless/geometry/seen_cut.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBndLib.hxx>
#include <BRepLib.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <BRep_Builder.hxx>
#include <Bnd_Box.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Ax2.hxx>
#include <gp_Pln.hxx>
#include <stdexcept>

#include "headless/geometry/built_body.h"
#include "headless/geometry/shapes.h"

namespace headless::geometry {
namespace {

constexpr double kTouching = 1e-6;  // of the size, by which a body must reach over the plane to be cut
constexpr double kSmooth = 2e-3;    // radians: faces that meet so go on without a bend

class Knife {
 public:
  Knife(const SightCut& cut, const Paper& paper)
      : plane_(gp_Pnt(cut.point.x, cut.point.y, cut.point.z), gp_Dir(cut.normal.x, cut.normal.y, cut.normal.z)),
        normal_(plane_.Axis().Direction()),
        paper_(paper) {}

  enum class Side { before, across, behind };
  // size: of the shape.
  Side sideOf(const TopoDS_Shape& shape, double& size) const {
    // Along the plane's own axes, so that the box is as narrow as it can be.
    gp_Trsf turned;
    turned.SetTransformation(gp_Ax3(plane_.Location(), normal_));
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape.Moved(TopLoc_Location(turned)), box, false, false);
    if (box.IsVoid()) return Side::behind;
    size = std::sqrt(box.SquareExtent());
    const double least = kTouching * size;
    if (box.CornerMin().Z() > -least) return Side::before;
    return box.CornerMax().Z() > least ? Side::across : Side::behind;
  }

  // Solids and open shells, each on its own: the library doesn't cut both at once.
  TopoDS_Shape halved(const TopoDS_Shape& shape, double size) const {
    TopoDS_Compound all;
    BRep_Builder builder;
    builder.MakeCompound(all);
    const TopoDS_Shape before = half(shape, size);
    const auto add = [&](const TopoDS_Shape& piece) {
      BRepAlgoAPI_Cut cut;
      TopTools_ListOfShape arguments, tools;
      arguments.Append(piece);
      tools.Append(before);
      cut.SetArguments(arguments);
      cut.SetTools(tools);
      cut.SetToFillHistory(false);
      cut.Build();
      if (!cut.IsDone() || cut.HasErrors() || cut.Shape().IsNull())
        throw std::runtime_error("a body can't be cut by the section's plane");
      builder.Add(all, cut.Shape());
    };
    for (TopExp_Explorer at(shape, TopAbs_SOLID); at.More(); at.Next()) add(at.Current());
    for (TopExp_Explorer at(shape, TopAbs_SHELL, TopAbs_SOLID); at.More(); at.Next()) add(at.Current());
    BRepLib::EncodeRegularity(all, kSmooth);
    return all;
  }

  // What of it lies between the roots and the tips of its gears, and the rest.
  struct Toothed {
    TopoDS_Shape teeth, rest;
  };
  static Toothed parted(const TopoDS_Shape& shape, const PlacedBody& body) {
    TopTools_ListOfShape rings, arguments;
    for (const Gear& gear : body.gears) rings.Append(ringOf(gear, body));
    arguments.Append(shape);
    const auto made = [&](auto operation) {
      operation.SetArguments(arguments);
      operation.SetTools(rings);
      operation.SetToFillHistory(false);
      operation.Build();
      if (!operation.IsDone() || operation.HasErrors() || operation.Shape().IsNull())
        throw std::runtime_error("the teeth of a gear can't be told apart");
      const TopoDS_Shape result = operation.Shape();
      BRepLib::EncodeRegularity(result, kSmooth);
      return result;
    };
    return {made(BRepAlgoAPI_Common()), made(BRepAlgoAPI_Cut())};
  }

  // The faces of solids that lie in the plane and look to the viewer.
  void addCuts(const TopoDS_Shape& halved, double size, int number, std::vector<SeenCut>& into) const {
    for (TopExp_Explorer solid(halved, TopAbs_SOLID); solid.More(); solid.Next())
      for (TopExp_Explorer at(solid.Current(), TopAbs_FACE); at.More(); at.Next()) {
        const TopoDS_Face& face = TopoDS::Face(at.Current());
        if (liesInPlane(face, size)) into.push_back({number, loopsOf(face)});
      }
  }

 private:
  static TopoDS_Shape ringOf(const Gear& gear, const PlacedBody& body) {
    const creo::ProVector &at = gear.place.origin, &x = gear.place.xAxis, &z = gear.place.zAxis;
    const double scale = body.scale, outer = std::max(gear.tip, gear.root) / 2,
                 inner = std::min(gear.tip, gear.root) / 2;
    const gp_Ax2 axes(gp_Pnt(at.x * scale, at.y * scale, at.z * scale), gp_Dir(z.x, z.y, z.z), gp_Dir(x.x, x.y, x.z));
    const auto cylinder = [&](double radius) {
      return BRepPrimAPI_MakeCylinder(axes, radius * scale, gear.length * scale).Shape();
    };
    return BRepAlgoAPI_Cut(cylinder(outer), cylinder(inner)).Shape().Moved(location(body.place));
  }
  TopoDS_Shape half(const TopoDS_Shape& shape, double size) const {
    Bnd_Box box;
    BRepBndLib::Add(shape, box, false);
    const gp_XYZ middle = (box.CornerMin().XYZ() + box.CornerMax().XYZ()) / 2;
    const double away = (middle - plane_.Location().XYZ()).Dot(normal_.XYZ());
    const double reach = 2 * size + std::fabs(away);
    gp_Ax2 axes(gp_Pnt(middle - normal_.XYZ() * away), normal_);
    axes.Translate(gp_Vec(axes.XDirection()) * -reach + gp_Vec(axes.YDirection()) * -reach);
    return BRepPrimAPI_MakeBox(axes, 2 * reach, 2 * reach, reach).Shape();
  }
  bool liesInPlane(const TopoDS_Face& face, double size) const {
    const BRepAdaptor_Surface surface(face, false);
    if (surface.GetType() != GeomAbs_Plane) return false;
    const gp_Pln plane = surface.Plane();
    return plane.Axis().Direction().IsParallel(normal_, 1e-6) && plane_.Distance(plane.Location()) <= kTouching * size;
  }
  std::vector<FlatLoop> loopsOf(const TopoDS_Face& face) const {
    std::vector<FlatLoop> loops;
    for (TopExp_Explorer at(face, TopAbs_WIRE); at.More(); at.Next()) {
      FlatLoop loop;
      for (BRepTools_WireExplorer edge(TopoDS::Wire(at.Current())); edge.More(); edge.Next())
        if (auto curve = flatCurve(BRepAdaptor_Curve(edge.Current()), paper_)) loop.push_back(std::move(*curve));
      if (!loop.empty()) loops.push_back(std::move(loop));
    }
    return loops;
  }

  gp_Pln plane_;
  gp_Dir normal_;
  const Paper& paper_;
};

}  // namespace

CutShapes cutShapes(const Sight& sight, const std::vector<TopoDS_Shape>& shapes, const Paper& paper) {
  CutShapes result;
  const Knife knife(*sight.cut, paper);
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const PlacedBody& body = sight.bodies[i];
    double size = 0;
    const Knife::Side side = knife.sideOf(shapes[i], size);
    if (side == Knife::Side::before) continue;
    if (side == Knife::Side::behind || !body.isCut) {
      result.shapes.push_back(shapes[i]);
      continue;
    }
    TopoDS_Shape left = knife.halved(shapes[i], size);
    if (!body.gears.empty()) {
      Knife::Toothed toothed = Knife::parted(left, body);
      result.shapes.push_back(std::move(toothed.teeth));
      left = std::move(toothed.rest);
    }
    knife.addCuts(left, size, body.number, result.cuts);
    result.shapes.push_back(std::move(left));
  }
  return result;
}

}  // namespace headless::geometry
