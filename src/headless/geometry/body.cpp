#include "headless/geometry/body.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBndLib.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <cmath>
#include <gp_Ax3.hxx>

#include "headless/geometry/built_body.h"
#include "headless/geometry/integrals.h"
#include "headless/geometry/library_failure.h"
#include "headless/geometry/shapes.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless::geometry {
namespace {

// What is no length for the library is its rounding, and would show as "-0.000000".
creo::ProVector cleaned(const creo::ProVector& v) {
  constexpr double kNothing = 1e-9;
  const auto clean = [](double x) { return std::abs(x) < kNothing ? 0 : x; };
  return {clean(v.x), clean(v.y), clean(v.z)};
}

creo::ProOutline boxOf(const TopoDS_Shape& shape) {
  Bnd_Box box;
  BRepBndLib::AddOptimal(shape, box, false, false);
  if (box.IsVoid()) return {};
  box.SetGap(0);
  creo::ProOutline outline;
  box.Get(outline.min.x, outline.min.y, outline.min.z, outline.max.x, outline.max.y, outline.max.z);
  return {cleaned(outline.min), cleaned(outline.max)};
}

// Primitives of one use that follow one another go into one operation of the library, so that a plate with a hundred
// holes is cut once.
class Builder {
 public:
  // Ends what the primitives before this one began, where it is of another use; their faults come here.
  void begin(const Primitive& primitive) {
    const bool cuts = primitive.use == PrimitiveUse::cut || primitive.kind == PrimitiveKind::hole;
    if (cuts != cuts_) finish();
    cuts_ = cuts;
  }
  void take(const Primitive& primitive) {
    if (cuts_ && shape_.IsNull()) throw ShapeFault{L"there is nothing to cut yet"};
    TopoDS_Shape made = primitive.kind == PrimitiveKind::import ? solidsOfImport(primitive)
                                                                : shapeOf(primitive, cuts_ ? reach(primitive) : 0);
    if (shape_.IsNull())
      shape_ = std::move(made);
    else if (!made.IsNull())
      tools_.Append(made);
  }
  // The solids, then the quilts.
  TopoDS_Shape result() {
    finish();
    if (quilts_.empty()) return shape_;
    TopoDS_Compound all;
    const BRep_Builder builder;
    builder.MakeCompound(all);
    if (!shape_.IsNull()) builder.Add(all, shape_);
    for (const TopoDS_Shape& quilt : quilts_) builder.Add(all, quilt);
    return all;
  }
  // Is it at an operation over several primitives? Then any of them may be at fault.
  [[nodiscard]] bool joinsSeveral() const { return joinsSeveral_; }
  std::vector<std::wstring> warnings;  // of the primitive that was taken last

 private:
  // Null for quilts alone. No primitive cuts or joins a quilt.
  TopoDS_Shape solidsOfImport(const Primitive& primitive) {
    const TopoDS_Shape all = imported(primitive, warnings);
    TopoDS_Shape solids = solidsIn(all);
    if (cuts_ && solids.IsNull()) throw ShapeFault{L"the file holds no solid body"};
    if (cuts_) return solids;
    for (TopExp_Explorer at(all, TopAbs_SHELL, TopAbs_SOLID); at.More(); at.Next()) quilts_.push_back(at.Current());
    return solids;
  }

  // A length from the primitive's origin that leads out of the shape in any direction.
  double reach(const Primitive& primitive) {
    if (primitive.kind != PrimitiveKind::hole || primitive.length != 0) return 0;
    if (!bounds_) bounds_ = boxOf(shape_);
    const creo::ProVector& o = primitive.placement.origin;
    double squares = 0;
    for (const auto& [low, high, at] : {std::array{bounds_->min.x, bounds_->max.x, o.x},
                                        {bounds_->min.y, bounds_->max.y, o.y},
                                        {bounds_->min.z, bounds_->max.z, o.z}}) {
      const double far = std::max(std::abs(low - at), std::abs(high - at));
      squares += far * far;
    }
    return std::sqrt(squares) * 1.1 + primitive.diameter;
  }

  void finish() {
    if (tools_.IsEmpty()) return;
    joinsSeveral_ = tools_.Extent() > 1;
    if (cuts_)
      apply(BRepAlgoAPI_Cut());
    else
      apply(BRepAlgoAPI_Fuse());
    joinsSeveral_ = false;
    tools_.Clear();
    bounds_.reset();
  }
  template <class Operation>
  void apply(Operation operation) {
    TopTools_ListOfShape arguments;
    arguments.Append(shape_);
    operation.SetArguments(arguments);
    operation.SetTools(tools_);
    operation.SetToFillHistory(false);
    operation.Build();
    if (!operation.IsDone() || operation.HasErrors()) throw ShapeFault{L"it can't be joined with what is there"};
    shape_ = operation.Shape();
    if (!TopExp_Explorer(shape_, TopAbs_SOLID).More()) throw ShapeFault{L"nothing is left of the body"};
  }

  TopoDS_Shape shape_;
  TopTools_ListOfShape tools_;
  std::vector<TopoDS_Shape> quilts_;
  bool cuts_ = false;
  bool joinsSeveral_ = false;
  std::optional<creo::ProOutline> bounds_;
};

}  // namespace

TopLoc_Location location(const creo::ProTransform& t) {
  const auto direction = [](const creo::ProVector& v) { return gp_Dir(v.x, v.y, v.z); };
  gp_Trsf moved;  // of no other scale, however the axes were rounded
  moved.SetDisplacement(gp_Ax3(),
                        gp_Ax3(gp_Pnt(t.origin.x, t.origin.y, t.origin.z), direction(t.zAxis), direction(t.xAxis)));
  return {moved};
}

Built build(const std::vector<Primitive>& primitives) {
  if (primitives.empty()) return {};
  int number = 0;
  const auto named = [&number](const std::wstring& reason) {
    return text::format(L"primitive %d: %s", number, reason);
  };
  Builder builder;
  const auto faulty = [&](const std::wstring& reason) {
    if (!builder.joinsSeveral()) return Built{nullptr, named(reason), {}, number};
    return Built{nullptr, text::format(L"primitive %d or one before it: %s", number, reason), {}, 0};
  };
  try {
    std::vector<std::wstring> warnings;
    for (const Primitive& primitive : primitives) {
      builder.begin(primitive);
      ++number;
      builder.take(primitive);
      for (const std::wstring& warning : std::exchange(builder.warnings, {})) warnings.push_back(named(warning));
    }
    return {std::make_shared<Body>(builder.result()), {}, std::move(warnings), 0};
  } catch (const ShapeFault& fault) {
    return faulty(fault.reason);
  } catch (const Standard_Failure& failure) {
    return faulty(L"it can't be built: " + text::fromUtf8(failure.GetMessageString()));
  }
}

const Measured& measure(const Body& body) {
  if (!body.measured) {
    guarded([&body] {
      const bool hasQuilts = TopExp_Explorer(body.shape, TopAbs_SHELL, TopAbs_SOLID).More();
      const TopoDS_Shape solids = hasQuilts ? solidsIn(body.shape) : body.shape;
      const TopExp_Explorer corner(solids, TopAbs_VERTEX);
      Cones cones(corner.More() ? BRep_Tool::Pnt(TopoDS::Vertex(corner.Current())) : gp_Pnt());
      for (TopExp_Explorer at(solids, TopAbs_FACE); at.More(); at.Next()) cones.add(TopoDS::Face(at.Current()));
      body.measured = Measured{cones.volume(), cones.area(), {}};
      if (cones.volume() == 0) return;
      const gp_Pnt centre = cones.centre();
      body.measured->centre = cleaned({centre.X(), centre.Y(), centre.Z()});
    });
  }
  return *body.measured;
}

creo::ProOutline outline(const Body& body, const creo::ProTransform& into) {
  creo::ProOutline box;
  guarded([&] {
    if (!body.extent) body.extent.emplace(body.shape);
    box = body.extent->box(into);
  });
  return {cleaned(box.min), cleaned(box.max)};
}

}  // namespace headless::geometry
