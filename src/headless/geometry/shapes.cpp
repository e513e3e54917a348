#include "headless/geometry/shapes.h"

#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <gp_Ax2.hxx>
#include <gp_Pln.hxx>
#include <numbers>

namespace headless::geometry {
namespace {

// Shorter ones are no lengths for the library.
constexpr double kLeastLength = 1e-6;
constexpr double kFullTurn = 360;

gp_Pnt point(const creo::ProVector& v) { return {v.x, v.y, v.z}; }
gp_Dir direction(const creo::ProVector& v) { return {v.x, v.y, v.z}; }

double positive(double value, const wchar_t* what) {
  if (value >= kLeastLength) return value;
  throw ShapeFault{std::wstring(what) + L" must be over 0"};
}

// Twice the area, positive for a profile that goes counter-clockwise.
double turning(const std::vector<std::array<double, 2>>& profile) {
  double sum = 0;
  for (std::size_t i = 0; i < profile.size(); ++i) {
    const auto& [x, y] = profile[i];
    const auto& [nextX, nextY] = profile[(i + 1) % profile.size()];
    sum += x * nextY - nextX * y;
  }
  return sum;
}

// The profile's face in the plane of two axes of the placement; its normal is the third.
TopoDS_Face profileFace(const Primitive& primitive, const creo::ProVector& first, const creo::ProVector& second) {
  auto profile = primitive.profile;
  const double turn = turning(profile);
  if (std::abs(turn) < kLeastLength * kLeastLength) throw ShapeFault{L"the profile has no area"};
  if (turn < 0) std::reverse(profile.begin(), profile.end());
  BRepBuilderAPI_MakePolygon polygon;
  for (const auto& [a, b] : profile) {
    const creo::ProVector& o = primitive.placement.origin;
    polygon.Add(
        gp_Pnt(o.x + a * first.x + b * second.x, o.y + a * first.y + b * second.y, o.z + a * first.z + b * second.z));
  }
  polygon.Close();
  const gp_Dir normal = direction(first).Crossed(direction(second));
  const BRepBuilderAPI_MakeFace face(gp_Pln(point(primitive.placement.origin), normal), polygon.Wire());
  if (!face.IsDone() || !BRepCheck_Analyzer(face.Face()).IsValid()) throw ShapeFault{L"the profile crosses itself"};
  return face.Face();
}

TopoDS_Shape extrusion(const Primitive& primitive) {
  const creo::ProTransform& at = primitive.placement;
  const double length = positive(primitive.length, L"the length");
  const gp_Vec way(at.zAxis.x * length, at.zAxis.y * length, at.zAxis.z * length);
  return BRepPrimAPI_MakePrism(profileFace(primitive, at.xAxis, at.yAxis), way).Shape();
}

TopoDS_Shape revolution(const Primitive& primitive) {
  const creo::ProTransform& at = primitive.placement;
  for (const auto& [radius, z] : primitive.profile)
    if (radius < 0) throw ShapeFault{L"the profile must lie on one side of the axis"};
  const double angle = positive(primitive.angle, L"the angle");
  if (angle > kFullTurn) throw ShapeFault{L"the angle must be at most 360"};
  const TopoDS_Face face = profileFace(primitive, at.xAxis, at.zAxis);
  const gp_Ax1 axis(point(at.origin), direction(at.zAxis));
  if (angle == kFullTurn) return BRepPrimAPI_MakeRevol(face, axis).Shape();
  return BRepPrimAPI_MakeRevol(face, axis, angle * std::numbers::pi / 180).Shape();
}

TopoDS_Shape cone(const Primitive& primitive, const gp_Ax2& axes) {
  const double bottom = primitive.diameter / 2, top = primitive.topDiameter / 2;
  if (bottom < 0 || top < 0) throw ShapeFault{L"a diameter must not be under 0"};
  positive(std::max(bottom, top), L"the diameter");
  const double length = positive(primitive.length, L"the length");
  if (std::abs(bottom - top) < kLeastLength) return BRepPrimAPI_MakeCylinder(axes, bottom, length).Shape();
  return BRepPrimAPI_MakeCone(axes, bottom, top, length).Shape();
}

// A hole without a length goes through all in both directions.
TopoDS_Shape hole(const Primitive& primitive, double reach) {
  const creo::ProTransform& at = primitive.placement;
  const double radius = positive(primitive.diameter, L"the diameter") / 2;
  if (primitive.length < 0) throw ShapeFault{L"the length must be over 0"};
  const bool through = primitive.length == 0;
  const creo::ProVector start = through ? creo::transformPoint(at, {0, 0, -reach}) : at.origin;
  const gp_Ax2 axes(point(start), direction(at.zAxis), direction(at.xAxis));
  return BRepPrimAPI_MakeCylinder(axes, radius, through ? 2 * reach : positive(primitive.length, L"the length"))
      .Shape();
}

}  // namespace

TopoDS_Shape shapeOf(const Primitive& primitive, double reach) {
  const creo::ProTransform& at = primitive.placement;
  const gp_Ax2 axes(point(at.origin), direction(at.zAxis), direction(at.xAxis));
  switch (primitive.kind) {
    case PrimitiveKind::box: {
      const auto& [x, y, z] = primitive.size;
      positive(std::min({x, y, z}), L"each side");
      return BRepPrimAPI_MakeBox(axes, x, y, z).Shape();
    }
    case PrimitiveKind::cylinder:
      return BRepPrimAPI_MakeCylinder(axes, positive(primitive.diameter, L"the diameter") / 2,
                                      positive(primitive.length, L"the length"))
          .Shape();
    case PrimitiveKind::cone:
      return cone(primitive, axes);
    case PrimitiveKind::sphere:
      return BRepPrimAPI_MakeSphere(axes, positive(primitive.diameter, L"the diameter") / 2).Shape();
    case PrimitiveKind::extrusion:
      return extrusion(primitive);
    case PrimitiveKind::revolution:
      return revolution(primitive);
    case PrimitiveKind::hole:
      return hole(primitive, reach);
    case PrimitiveKind::import:
      break;
  }
  throw ShapeFault{L"it is of no known type"};
}

TopoDS_Shape solidsIn(const TopoDS_Shape& shape) {
  TopoDS_Compound solids;
  const BRep_Builder builder;
  builder.MakeCompound(solids);
  bool any = false;
  for (TopExp_Explorer at(shape, TopAbs_SOLID); at.More(); at.Next(), any = true) builder.Add(solids, at.Current());
  return any ? solids : TopoDS_Shape();
}

}  // namespace headless::geometry
