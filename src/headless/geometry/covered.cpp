#include "headless/geometry/covered.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Circ.hxx>
#include <gp_Pln.hxx>
#include <gp_Trsf.hxx>
#include <map>

namespace headless::geometry {
namespace {

// Of its diagonal: by which a body must lie behind a face, and by which it may reach beyond. Where both end in one line
// that one is drawn.
constexpr double kBehind = 1e-3, kBeyond = 1e-6;
constexpr double kApart = 0.01;       // mm on paper
constexpr double kMostSlanted = 0.2;  // cosine of the angle to the viewer: a steeper face covers hardly anything

// A box on paper, and how near it comes to the viewer.
struct Reach {
  FlatBox box;
  double nearest = -HUGE_VAL;
};

Reach reachOf(const TopoDS_Shape& shape, const Paper& paper) {
  Reach reach;
  Bnd_Box box;
  BRepBndLib::Add(shape, box, false);
  if (box.IsVoid() || box.IsOpen()) return reach;
  const gp_Pnt low = box.CornerMin(), high = box.CornerMax();
  for (int corner = 0; corner < 8; ++corner) {
    const gp_XYZ p((corner & 1 ? low : high).X(), (corner & 2 ? low : high).Y(), (corner & 4 ? low : high).Z());
    reach.box.take(paper.at(p));
    reach.nearest = std::max(reach.nearest, p.Dot(paper.z.XYZ()));
  }
  return reach;
}

bool contains(const FlatBox& box, const FlatBox& inner) {
  return !box.isEmpty && inner.left > box.left && inner.right < box.right && inner.low > box.low &&
         inner.high < box.high;
}

FlatBox widened(const FlatBox& box, double by) {
  return {box.left - by, box.low - by, box.right + by, box.high + by, false};
}

// Does the line come into the box?
bool crosses(const FlatBox& box, const FlatPoint& a, const FlatPoint& b) {
  double from = 0, to = 1;
  for (const auto& [start, way, low, high] :
       {std::array{a.x, b.x - a.x, box.left, box.right}, {a.y, b.y - a.y, box.low, box.high}}) {
    if (way == 0) {
      if (start < low || start > high) return false;
      continue;
    }
    const double first = (low - start) / way, last = (high - start) / way;
    from = std::max(from, std::min(first, last));
    to = std::min(to, std::max(first, last));
  }
  return from <= to;
}

// A flat face that isn't seen from its side.
class Cover {
 public:
  Cover(const TopoDS_Face& face, const gp_Pln& plane, const Paper& paper, std::size_t owner)
      : owner_(owner), face_(face), plane_(plane), paper_(paper), reach_(reachOf(face, paper)) {}
  [[nodiscard]] std::size_t owner() const { return owner_; }

  // No edge of the face comes into the box, and its middle lies in the face: so does all of it.
  bool covers(const Reach& body, double size) {
    const FlatBox box = widened(body.box, -kBeyond * size * paper_.scale);
    if (reach_.nearest < body.nearest || !contains(reach_.box, box)) return false;
    for (const auto& [x, y] :
         {std::pair(box.left, box.low), {box.right, box.low}, {box.left, box.high}, {box.right, box.high}})
      if (depthAt({x, y}) < body.nearest + kBehind * size) return false;
    bool isInside = false;
    const FlatPoint middle{(box.left + box.right) / 2, (box.low + box.high) / 2};
    for (const FlatLine& edge : edges()) {
      if (crosses(widened(box, bulge_), edge.from, edge.to)) return false;
      const auto& [a, b] = edge;
      if ((a.y > middle.y) != (b.y > middle.y) && middle.x < a.x + (middle.y - a.y) / (b.y - a.y) * (b.x - a.x))
        isInside = !isInside;
    }
    return isInside;
  }

 private:
  double depthAt(const FlatPoint& p) const {
    const gp_XYZ there = (paper_.x.XYZ() * p.x + paper_.y.XYZ() * p.y) / paper_.scale, z = paper_.z.XYZ();
    const gp_XYZ normal = plane_.Axis().Direction().XYZ();
    return (plane_.Location().XYZ() - there).Dot(normal) / z.Dot(normal);
  }
  // The lines that the edges are made of; circles stand out beyond theirs by the bulge at most.
  const std::vector<FlatLine>& edges() {
    if (!edges_.empty()) return edges_;
    const auto add = [this](const FlatPoint& a, const FlatPoint& b) { edges_.push_back({a, b}); };
    for (TopExp_Explorer at(face_, TopAbs_EDGE); at.More(); at.Next()) {
      constexpr int kPieces = 64;
      const BRepAdaptor_Curve curve(TopoDS::Edge(at.Current()));
      const bool isCircle = curve.GetType() == GeomAbs_Circle;
      const int pieces = isCircle ? kPieces : 1;
      const double first = curve.FirstParameter(), step = (curve.LastParameter() - first) / pieces;
      if (isCircle) bulge_ = std::max(bulge_, curve.Circle().Radius() * (1 - std::cos(step / 2)) * paper_.scale);
      for (int i = 0; i < pieces; ++i)
        add(paper_.at(curve.Value(first + i * step)), paper_.at(curve.Value(first + (i + 1) * step)));
    }
    return edges_;
  }

  std::size_t owner_;
  TopoDS_Face face_;
  gp_Pln plane_;
  const Paper& paper_;
  Reach reach_;
  std::vector<FlatLine> edges_;
  double bulge_ = 0;  // mm on paper
};

// How far any other curve stands out beyond its chords isn't known.
bool isOfLinesAndCircles(const TopoDS_Face& face) {
  for (TopExp_Explorer at(face, TopAbs_EDGE); at.More(); at.Next()) {
    const TopoDS_Edge& edge = TopoDS::Edge(at.Current());
    if (BRep_Tool::Degenerated(edge)) return false;
    const GeomAbs_CurveType type = BRepAdaptor_Curve(edge).GetType();
    if (type != GeomAbs_Line && type != GeomAbs_Circle) return false;
  }
  return true;
}

std::vector<Cover> coversOf(const std::vector<TopoDS_Shape>& shapes, const Paper& paper) {
  std::vector<Cover> covers;
  for (std::size_t i = 0; i < shapes.size(); ++i)
    for (TopExp_Explorer at(shapes[i], TopAbs_FACE); at.More(); at.Next()) {
      const TopoDS_Face& face = TopoDS::Face(at.Current());
      const BRepAdaptor_Surface surface(face, false);
      if (surface.GetType() != GeomAbs_Plane) continue;
      const gp_Pln plane = surface.Plane();
      if (std::fabs(plane.Axis().Direction().Dot(paper.z)) > kMostSlanted && isOfLinesAndCircles(face))
        covers.emplace_back(face, plane, paper, i);
    }
  return covers;
}

}  // namespace

std::vector<TopoDS_Shape> withoutCovered(const std::vector<TopoDS_Shape>& shapes, const Paper& paper) {
  if (shapes.size() < 2) return shapes;
  std::vector<Cover> covers = coversOf(shapes, paper);
  std::vector<TopoDS_Shape> seen;
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const Reach reach = reachOf(shapes[i], paper);
    const double size = std::hypot(reach.box.right - reach.box.left, reach.box.high - reach.box.low) / paper.scale;
    const bool isCovered =
        std::ranges::any_of(covers, [&](Cover& cover) { return cover.owner() != i && cover.covers(reach, size); });
    if (!isCovered) seen.push_back(shapes[i]);
  }
  return seen;
}

std::vector<std::vector<TopoDS_Shape>> apartOnPaper(const std::vector<TopoDS_Shape>& shapes, const Paper& paper) {
  std::vector<FlatBox> boxes;
  std::vector<std::size_t> order, group(shapes.size());
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const FlatBox box = reachOf(shapes[i], paper).box;
    boxes.push_back(box.isEmpty ? FlatBox{-HUGE_VAL, -HUGE_VAL, HUGE_VAL, HUGE_VAL, false} : widened(box, kApart));
    group[i] = i;
    if (TopExp_Explorer(shapes[i], TopAbs_FACE).More()) order.push_back(i);
  }
  const auto first = [&](std::size_t i) {
    while (group[i] != i) i = group[i] = group[group[i]];
    return i;
  };
  std::ranges::sort(order, {}, [&](std::size_t i) { return boxes[i].left; });
  for (auto at = order.begin(); at != order.end(); ++at)
    for (auto next = at + 1; next != order.end() && boxes[*next].left <= boxes[*at].right; ++next)
      if (boxes[*next].low <= boxes[*at].high && boxes[*at].low <= boxes[*next].high)
        group[std::max(first(*at), first(*next))] = std::min(first(*at), first(*next));
  std::map<std::size_t, std::vector<TopoDS_Shape>> groups;
  std::ranges::sort(order);
  for (const std::size_t i : order) groups[first(i)].push_back(shapes[i]);
  std::vector<std::vector<TopoDS_Shape>> all;
  for (auto& [number, members] : groups) all.push_back(std::move(members));
  return all;
}

}  // namespace headless::geometry
