#include "headless/geometry/turned_away.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepClass3d_SolidClassifier.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Solid.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>
#include <numbers>
#include <utility>
#include <vector>

namespace headless::geometry {
namespace {

constexpr double kOnEdge = 1e-9;  // cosine of the angle to the viewer
constexpr double kSamePlace = 1e-7;

// The greatest value of cos(t - peak) between two angles.
double greatestCosine(double peak, double from, double to) {
  constexpr double kTurn = 2 * std::numbers::pi;
  const double next = peak + kTurn * std::ceil((from - peak) / kTurn);
  return next <= to ? 1 : std::max(std::cos(from - peak), std::cos(to - peak));
}

// The greatest cosine that the outer normal of a face of revolution has with the viewer's direction. Across the axis
// the normal has the length `across`, along it the rest.
double greatestOf(const gp_Ax3& axes, double across, double along, bool isReversed, const TopoDS_Face& face,
                  const gp_Dir& z) {
  double u1 = 0, u2 = 0, v1 = 0, v2 = 0;
  BRepTools::UVBounds(face, u1, u2, v1, v2);
  const double sign = isReversed ? -1 : 1;
  const double x = sign * across * axes.XDirection().Dot(z), y = sign * across * axes.YDirection().Dot(z);
  return std::hypot(x, y) * greatestCosine(std::atan2(y, x), u1, u2) + sign * along * axes.Direction().Dot(z);
}

// Does no point of the face look to the viewer?
bool isTurnedAway(const TopoDS_Face& face, const gp_Dir& z) {
  const BRepAdaptor_Surface surface(face, false);
  const bool isReversed = face.Orientation() == TopAbs_REVERSED;
  switch (surface.GetType()) {
    case GeomAbs_Plane: {
      const gp_Ax3 axes = surface.Plane().Position();
      const double towards = axes.Direction().Dot(z) * (axes.Direct() ? 1 : -1);
      return (isReversed ? -towards : towards) < kOnEdge;
    }
    case GeomAbs_Cylinder: {
      const gp_Ax3 axes = surface.Cylinder().Position();
      return greatestOf(axes, axes.Direct() ? 1 : -1, 0, isReversed, face, z) < kOnEdge;
    }
    case GeomAbs_Cone: {
      const gp_Cone cone = surface.Cone();
      const gp_Ax3 axes = cone.Position();
      double u1 = 0, u2 = 0, v1 = 0, v2 = 0;
      BRepTools::UVBounds(face, u1, u2, v1, v2);
      const double s = std::sin(cone.SemiAngle()), first = cone.RefRadius() + v1 * s, last = cone.RefRadius() + v2 * s;
      if (first * last < 0) return false;  // both halves of it: the normal turns over at the apex
      const double side = (axes.Direct() ? 1 : -1) * (first + last < 0 ? -1 : 1);
      return greatestOf(axes, side * std::cos(cone.SemiAngle()), -side * s, isReversed, face, z) < kOnEdge;
    }
    default:
      return false;
  }
}

bool isClosed(const TopoDS_Shape& solid) {
  for (TopExp_Explorer at(solid, TopAbs_SHELL); at.More(); at.Next())
    if (!BRep_Tool::IsClosed(at.Current())) return false;
  BRepClass3d_SolidClassifier place(solid);
  place.PerformInfinitePoint(kSamePlace);
  return place.State() == TopAbs_OUT;
}

class Solid {
 public:
  Solid(const TopoDS_Shape& solid, const gp_Dir& z) {
    TopExp::MapShapesAndAncestors(solid, TopAbs_EDGE, TopAbs_FACE, facesOf_);
    for (TopExp_Explorer at(solid, TopAbs_FACE); at.More(); at.Next()) {
      const TopoDS_Face& face = TopoDS::Face(at.Current());
      if (faces_.Contains(face)) continue;
      faces_.Add(face);
      stays_.push_back(!isTurnedAway(face, z));
    }
    keepSmooth();
  }
  void addWhatStays(const BRep_Builder& builder, TopoDS_Compound& into) const {
    for (int i = 1; i <= faces_.Extent(); ++i)
      if (stays_[static_cast<std::size_t>(i - 1)]) builder.Add(into, faces_(i));
  }

 private:
  void keepSmooth() {
    std::vector<int> open;
    for (int i = 1; i <= faces_.Extent(); ++i)
      if (stays_[static_cast<std::size_t>(i - 1)]) open.push_back(i);
    while (!open.empty()) {
      const TopoDS_Face face = TopoDS::Face(faces_(open.back()));
      open.pop_back();
      for (TopExp_Explorer at(face, TopAbs_EDGE); at.More(); at.Next())
        for (const TopoDS_Shape& other : facesOf_.FindFromKey(at.Current())) {
          const int number = faces_.FindIndex(other);
          const auto place = static_cast<std::size_t>(number - 1);
          const TopoDS_Edge& edge = TopoDS::Edge(at.Current());
          if (stays_[place] || BRep_Tool::Continuity(edge, face, TopoDS::Face(other)) == GeomAbs_C0) continue;
          stays_[place] = true;
          open.push_back(number);
        }
    }
  }
  TopTools_IndexedDataMapOfShapeListOfShape facesOf_;
  TopTools_IndexedMapOfShape faces_;
  std::vector<bool> stays_;
};

}  // namespace

bool ClosedSolids::has(const TopoDS_Shape& solid) {
  const auto [known, isNew] = known_.try_emplace({solid.TShape().get(), solid.Orientation()});
  if (isNew) known->second = isClosed(solid);
  return known->second;
}

TopoDS_Shape lookingToViewer(const std::vector<TopoDS_Shape>& shapes, const Paper& paper, ClosedSolids& closed) {
  TopoDS_Compound all;
  const BRep_Builder builder;
  builder.MakeCompound(all);
  const auto addRest = [&](const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, TopAbs_ShapeEnum within) {
    for (TopExp_Explorer at(shape, kind, within); at.More(); at.Next()) builder.Add(all, at.Current());
  };
  for (const TopoDS_Shape& shape : shapes) {
    for (TopExp_Explorer at(shape, TopAbs_SOLID); at.More(); at.Next()) {
      if (closed.has(at.Current()))
        Solid(at.Current(), paper.z).addWhatStays(builder, all);
      else
        builder.Add(all, at.Current());
    }
    addRest(shape, TopAbs_SHELL, TopAbs_SOLID);
    addRest(shape, TopAbs_FACE, TopAbs_SHELL);
  }
  return all;
}

TopoDS_Shape asOne(const std::vector<TopoDS_Shape>& shapes) {
  TopoDS_Compound all;
  const BRep_Builder builder;
  builder.MakeCompound(all);
  for (const TopoDS_Shape& shape : shapes) builder.Add(all, shape);
  return all;
}

}  // namespace headless::geometry
