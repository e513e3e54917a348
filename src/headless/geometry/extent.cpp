#include "headless/geometry/extent.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>
#include <limits>
#include <numbers>

#include "headless/geometry/shapes.h"

namespace headless::geometry {

using creo::ProVector;

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

ProVector vector(const gp_XYZ& v) { return {v.X(), v.Y(), v.Z()}; }
double dot(const ProVector& a, const ProVector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

// Each once, however many faces share it.
std::vector<TopoDS_Shape> partsOf(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
  TopTools_IndexedMapOfShape map;
  TopExp::MapShapes(shape, kind, map);
  std::vector<TopoDS_Shape> parts;
  for (int i = 1; i <= map.Extent(); ++i) parts.push_back(map(i));
  return parts;
}

// Is it made of straight lines that end at its edges?
bool isRuled(GeomAbs_SurfaceType type) {
  return type == GeomAbs_Plane || type == GeomAbs_Cylinder || type == GeomAbs_Cone ||
         type == GeomAbs_SurfaceOfExtrusion;
}

}  // namespace

Extent::Extent(const TopoDS_Shape& shape) {
  const BRep_Builder builder;
  builder.MakeCompound(rest_);
  const auto leave = [&](const TopoDS_Shape& part) {
    builder.Add(rest_, part);
    hasRest_ = true;
  };
  for (const TopoDS_Shape& corner : partsOf(shape, TopAbs_VERTEX))
    corners_.push_back(vector(BRep_Tool::Pnt(TopoDS::Vertex(corner)).XYZ()));
  for (const TopoDS_Shape& part : partsOf(shape, TopAbs_EDGE)) {
    const TopoDS_Edge& edge = TopoDS::Edge(part);
    if (BRep_Tool::Degenerated(edge)) continue;
    const BRepAdaptor_Curve curve(edge);
    const auto arc = [&](const gp_Ax2& axes, double across, double along) {
      arcs_.push_back({vector(axes.Location().XYZ()), vector(axes.XDirection().XYZ() * across),
                       vector(axes.YDirection().XYZ() * along), curve.FirstParameter(), curve.LastParameter()});
    };
    if (curve.GetType() == GeomAbs_Circle)
      arc(curve.Circle().Position(), curve.Circle().Radius(), curve.Circle().Radius());
    else if (curve.GetType() == GeomAbs_Ellipse)
      arc(curve.Ellipse().Position(), curve.Ellipse().MajorRadius(), curve.Ellipse().MinorRadius());
    else if (curve.GetType() != GeomAbs_Line)
      leave(edge);
  }
  for (const TopoDS_Shape& face : partsOf(shape, TopAbs_FACE))
    if (!isRuled(BRepAdaptor_Surface(TopoDS::Face(face), false).GetType())) leave(face);
}

void Extent::Range::take(double value) {
  if (value < low) low = value;
  if (value > high) high = value;
}

// Its ends are corners; between them it turns back where the direction's own angle lies, or opposite.
void Extent::takeArc(Range& range, const Arc& arc, const ProVector& direction) {
  const double x = dot(arc.x, direction), y = dot(arc.y, direction);
  const double reach = std::hypot(x, y), middle = dot(arc.centre, direction);
  if (middle + reach <= range.high && middle - reach >= range.low) return;
  const double angle = std::atan2(y, x);
  const auto holds = [&arc](double t) {
    return t + std::ceil((arc.first - t) / kTurn) * kTurn <= arc.last;  // the first such angle that isn't before it
  };
  if (holds(angle)) range.take(middle + reach);
  if (holds(angle + kTurn / 2)) range.take(middle - reach);
}

Extent::Range Extent::along(const ProVector& direction) const {
  Range range{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
  for (const ProVector& corner : corners_) range.take(dot(corner, direction));
  for (const Arc& arc : arcs_) takeArc(range, arc, direction);
  return range;
}

creo::ProOutline Extent::box(const creo::ProTransform& into) const {
  const ProVector &x = into.xAxis, &y = into.yAxis, &z = into.zAxis, &o = into.origin;
  // A row of the transform is the direction that a coordinate is measured along.
  Range ranges[] = {along({x.x, y.x, z.x}), along({x.y, y.y, z.y}), along({x.z, y.z, z.z})};
  if (hasRest_) {
    creo::ProTransform turned = into;
    turned.origin = {};
    Bnd_Box box;
    BRepBndLib::AddOptimal(rest_.Moved(location(turned)), box, false, false);
    box.SetGap(0);
    creo::ProOutline rest;
    box.Get(rest.min.x, rest.min.y, rest.min.z, rest.max.x, rest.max.y, rest.max.z);
    for (const ProVector& end : {rest.min, rest.max}) {
      ranges[0].take(end.x);
      ranges[1].take(end.y);
      ranges[2].take(end.z);
    }
  }
  return {{ranges[0].low + o.x, ranges[1].low + o.y, ranges[2].low + o.z},
          {ranges[0].high + o.x, ranges[1].high + o.y, ranges[2].high + o.z}};
}

}  // namespace headless::geometry
