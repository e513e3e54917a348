#include "headless/geometry/seen_lines.h"

#include <BRepBuilderAPI_Transform.hxx>
#include <BRepLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <HLRAlgo_Projector.hxx>
#include <HLRBRep_Algo.hxx>
#include <HLRBRep_HLRToShape.hxx>
#include <HLRBRep_PolyAlgo.hxx>
#include <HLRBRep_PolyHLRToShape.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <gp_Ax2.hxx>
#include <map>
#include <optional>

#include "headless/geometry/built_body.h"
#include "headless/geometry/covered.h"
#include "headless/geometry/flat_joiner.h"
#include "headless/geometry/flat_projection.h"
#include "headless/geometry/seen_axes.h"
#include "headless/geometry/seen_check.h"
#include "headless/geometry/seen_cut.h"
#include "headless/geometry/shapes.h"
#include "headless/geometry/turned_away.h"

namespace headless::geometry {
namespace {

constexpr double kSmooth = 2e-3;  // radians: faces that meet so go on without a bend
constexpr double kFacetTurn = 0.12;
constexpr double kFacetOff = 0.05;  // mm on paper, from the true face

// Each body where it stands. What several places share is prepared once.
std::vector<TopoDS_Shape> placedShapes(const Sight& sight) {
  std::map<std::pair<const Body*, double>, TopoDS_Shape> made;
  std::vector<TopoDS_Shape> placed;
  for (const PlacedBody& entry : sight.bodies) {
    const auto [known, isNew] = made.try_emplace({entry.body.get(), entry.scale});
    if (isNew) {
      TopoDS_Shape& shape = known->second = entry.body->shape;
      if (entry.scale != 1) {
        gp_Trsf scaled;
        scaled.SetScaleFactor(entry.scale);
        shape = BRepBuilderAPI_Transform(shape, scaled, true).Shape();
      }
      BRepLib::EncodeRegularity(shape, kSmooth);
    }
    placed.push_back(known->second.Moved(location(entry.place)));
  }
  return placed;
}

HLRAlgo_Projector projector(const Paper& paper) { return {gp_Ax2(gp_Pnt(), paper.z, paper.x)}; }

template <class Take>
void eachEdge(const TopoDS_Shape& edges, Take take) {
  if (edges.IsNull()) return;
  for (TopExp_Explorer at(edges, TopAbs_EDGE); at.More(); at.Next()) take(TopoDS::Edge(at.Current()));
}

class View {
 public:
  explicit View(const Sight& sight) : sight_(sight), paper_(sight.screen, sight.scale), shapes_(placedShapes(sight)) {
    if (sight.cut) {
      CutShapes cut = cutShapes(sight, shapes_, paper_);
      shapes_ = std::move(cut.shapes);
      cuts_ = std::move(cut.cuts);
    }
    if (!sight.hidden) shapes_ = withoutCovered(shapes_, paper_);
    check_.emplace(shapes_, paper_);
  }

  Seen exact() {
    // The library's cost grows with the square of what it gets at once.
    for (const std::vector<TopoDS_Shape>& group : apartOnPaper(shapes_, paper_)) takeExact(group);
    return finished();
  }

  Seen faceted() {
    const Handle(HLRBRep_PolyAlgo) algorithm = new HLRBRep_PolyAlgo;
    for (const TopoDS_Shape& shape : shapes_) {
      const BRepMesh_IncrementalMesh meshed(shape, kFacetOff / sight_.scale, false, kFacetTurn, false);
      algorithm->Load(shape);
    }
    algorithm->Projector(projector(paper_));
    algorithm->Update();
    HLRBRep_PolyHLRToShape result;
    result.Update(algorithm);
    result.Hide();  // else all lines count as visible
    const auto flat = [&](SeenAs as, const TopoDS_Shape& edges) {
      eachEdge(edges, [&](const TopoDS_Edge& edge) { takeFlat(as, BRepAdaptor_Curve(edge)); });
    };
    flat(SeenAs::edge, result.VCompound());
    flat(SeenAs::edge, result.OutLineVCompound());
    flat(SeenAs::smooth, result.Rg1LineVCompound());
    if (sight_.hidden) {
      flat(SeenAs::hidden, result.HCompound());
      flat(SeenAs::hidden, result.OutLineHCompound());
    }
    Seen seen = finished();
    seen.isFaceted = true;
    return seen;
  }

 private:
  void takeExact(const std::vector<TopoDS_Shape>& shapes) {
    const Handle(HLRBRep_Algo) algorithm = new HLRBRep_Algo;
    algorithm->Add(sight_.hidden ? asOne(shapes) : lookingToViewer(shapes, paper_, closed_));
    algorithm->Projector(projector(paper_));
    algorithm->Update();
    algorithm->Hide();
    HLRBRep_HLRToShape result(algorithm);
    for (const auto type : {HLRBRep_Sharp, HLRBRep_OutLine, HLRBRep_Rg1Line}) {
      const SeenAs as = type == HLRBRep_Rg1Line ? SeenAs::smooth : SeenAs::edge;
      eachEdge(result.CompoundOfEdges(type, true, true), [&](const TopoDS_Edge& edge) { takeVisible(as, edge); });
      if (as == SeenAs::smooth || !sight_.hidden) continue;
      eachEdge(result.CompoundOfEdges(type, false, true),
               [&](const TopoDS_Edge& edge) { take(SeenAs::hidden, BRepAdaptor_Curve(edge)); });
    }
  }
  void take(SeenAs as, const BRepAdaptor_Curve& curve) {
    if (const auto flat = flatCurve(curve, paper_)) lines_.take(as, *flat);
  }
  void takeVisible(SeenAs as, const TopoDS_Edge& edge) {
    const BRepAdaptor_Curve curve(edge);
    if (!check_->isBehindFaces(curve)) return take(as, curve);
    ++corrected_;
    if (as == SeenAs::edge && sight_.hidden) take(SeenAs::hidden, curve);
  }
  // A line that lies on the paper already, in the picture's unit.
  void takeFlat(SeenAs as, const BRepAdaptor_Curve& curve) {
    const gp_Pnt from = curve.Value(curve.FirstParameter()), to = curve.Value(curve.LastParameter());
    const double scale = sight_.scale;
    lines_.take(as, FlatLine{{from.X() * scale, from.Y() * scale}, {to.X() * scale, to.Y() * scale}});
  }

  // Counted from the middle of the edges.
  Seen finished() {
    Seen seen;
    seen.corrected = corrected_;
    const FlatBox box = lines_.box();
    if (box.isEmpty) return seen;
    if (sight_.axes) {
      addAxes(lines_, shapes_, paper_);
      addPitch(lines_, sight_.bodies, paper_);
    }
    seen.width = box.right - box.left;
    seen.height = box.high - box.low;
    seen.middle = {(box.left + box.right) / 2, (box.low + box.high) / 2};
    const double x = -seen.middle.x, y = -seen.middle.y;
    seen.curves = lines_.result();
    for (SeenCurve& entry : seen.curves) entry.curve = moved(entry.curve, x, y);
    seen.cuts = cuts_;
    for (SeenCut& cut : seen.cuts)
      for (FlatLoop& loop : cut.loops)
        for (FlatCurve& curve : loop) curve = moved(curve, x, y);
    return seen;
  }

  const Sight& sight_;
  Paper paper_;
  std::vector<TopoDS_Shape> shapes_;
  std::optional<SeenCheck> check_;
  std::vector<SeenCut> cuts_;
  ClosedSolids closed_;
  FlatJoiner lines_;
  int corrected_ = 0;
};

}  // namespace

Seen seenLines(const Sight& sight, SeenBy by) {
  View view(sight);
  return by == SeenBy::exactEdges ? view.exact() : view.faceted();
}

}  // namespace headless::geometry
