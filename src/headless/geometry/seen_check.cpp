#include "headless/geometry/seen_check.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <gp_Lin.hxx>

namespace headless::geometry {
namespace {

// Of the size of all there is: how far beside the edge is looked, and what isn't before it yet. Of the two the second
// is larger, so that a steep face that ends at the edge isn't before it.
constexpr double kBeside = 1e-5, kBefore = 4e-4;

}  // namespace

SeenCheck::SeenCheck(const std::vector<TopoDS_Shape>& shapes, const Paper& paper) : paper_(paper) {
  Bnd_Box all;
  for (const TopoDS_Shape& shape : shapes)
    for (TopExp_Explorer at(shape, TopAbs_FACE); at.More(); at.Next()) {
      Bnd_Box box;
      BRepBndLib::Add(at.Current(), box, false);
      if (box.IsVoid() || box.IsOpen()) continue;
      all.Add(box);
      const gp_Pnt low = box.CornerMin(), high = box.CornerMax();
      Face face;
      face.nearest = -HUGE_VAL;
      for (int corner = 0; corner < 8; ++corner) {
        const gp_XYZ p((corner & 1 ? low : high).X(), (corner & 2 ? low : high).Y(), (corner & 4 ? low : high).Z());
        face.box.take(paper.at(p));
        face.nearest = std::max(face.nearest, p.Dot(paper.z.XYZ()));
      }
      face.face = TopoDS::Face(at.Current());
      faces_.push_back(std::move(face));
    }
  if (!all.IsVoid()) size_ = all.CornerMin().Distance(all.CornerMax());
  sortIntoCells();
}

std::size_t SeenCheck::cellOf(double at, double from, double to) {
  const double part = (at - from) / (to - from) * kCells;
  return part > 0 ? static_cast<std::size_t>(std::min(part, kCells - 1.0)) : 0;
}

void SeenCheck::sortIntoCells() {
  for (const Face& face : faces_)
    for (const FlatPoint& corner : {FlatPoint{face.box.left, face.box.low}, FlatPoint{face.box.right, face.box.high}})
      box_.take(corner);
  cells_.resize(std::size_t{kCells} * kCells);
  for (std::size_t i = 0; i < faces_.size(); ++i) {
    const FlatBox& box = faces_[i].box;
    for (std::size_t y = row(box.low); y <= row(box.high); ++y)
      for (std::size_t x = column(box.left); x <= column(box.right); ++x) cells_[y * kCells + x].push_back(i);
  }
}

bool SeenCheck::isBehindFaces(const BRepAdaptor_Curve& curve) {
  gp_Pnt middle;
  gp_Vec along;
  curve.D1((curve.FirstParameter() + curve.LastParameter()) / 2, middle, along);
  gp_Vec across = along.Crossed(gp_Vec(paper_.z));
  if (across.Magnitude() < 1e-9 * along.Magnitude()) return false;
  across = across.Normalized() * (kBeside * size_);
  return isBehind(middle.Translated(across)) && isBehind(middle.Translated(-across));
}

bool SeenCheck::isBehind(const gp_Pnt& point) {
  const FlatPoint flat = paper_.at(point);
  const double depth = point.XYZ().Dot(paper_.z.XYZ()), before = kBefore * size_;
  const gp_Lin ray(point, paper_.z);
  for (const std::size_t i : cells_[row(flat.y) * kCells + column(flat.x)]) {
    Face& face = faces_[i];
    const FlatBox& box = face.box;
    if (flat.x < box.left || flat.x > box.right || flat.y < box.low || flat.y > box.high) continue;
    if (face.nearest < depth + before) continue;
    if (!face.exact) face.exact = std::make_unique<IntCurvesFace_Intersector>(face.face, 1e-7);
    face.exact->Perform(ray, before, 2 * size_ + before);
    if (face.exact->IsDone() && face.exact->NbPnt() > 0) return true;
  }
  return false;
}

}  // namespace headless::geometry
