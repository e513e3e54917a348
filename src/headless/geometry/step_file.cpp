// Bodies from STEP files.
#include <BRepBuilderAPI_Transform.hxx>

#include "headless/geometry/foreign.h"
#include "headless/geometry/shapes.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace headless::geometry {
namespace {

ForeignBody read(const Primitive& primitive) {
  if (!primitive.step.empty()) return foreignBody(primitive.step);
  const auto file = os::files().read(primitive.file);
  if (!file) throw ShapeFault{L"the file can't be read: " + text::fromUtf8(file.error.message())};
  return foreignBody(file.value);
}

}  // namespace

TopoDS_Shape imported(const Primitive& primitive, std::vector<std::wstring>& warnings) {
  ForeignBody body = read(primitive);
  if (!body.fault.empty()) throw ShapeFault{std::move(body.fault)};
  for (std::wstring& warning : body.warnings) warnings.push_back(std::move(warning));
  TopoDS_Shape shape = body.shape;
  if (primitive.scale != 1) {
    gp_Trsf scaled;
    scaled.SetScaleFactor(primitive.scale);
    shape = BRepBuilderAPI_Transform(shape, scaled, true).Shape();
  }
  return shape.Moved(location(primitive.placement));
}

}  // namespace headless::geometry
