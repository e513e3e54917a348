// Bodies from STEP files.
#include <BRepBuilderAPI_Transform.hxx>
#include <BRep_Builder.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPControl_Reader.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <sstream>

#include "headless/geometry/shapes.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless::geometry {
namespace {

// The solids of a shape alone: wires and sheets that a file holds besides are no body.
TopoDS_Compound solidsOf(const TopoDS_Shape& shape) {
  TopoDS_Compound solids;
  const BRep_Builder builder;
  builder.MakeCompound(solids);
  bool any = false;
  for (TopExp_Explorer at(shape, TopAbs_SOLID); at.More(); at.Next(), any = true) builder.Add(solids, at.Current());
  if (!any) throw ShapeFault{L"the file holds no solid body"};
  return solids;
}

TopoDS_Shape read(const Primitive& primitive) {
  std::string bytes(primitive.step);
  if (bytes.empty()) {
    auto file = os::files().read(primitive.file);
    if (!file) throw ShapeFault{L"the file can't be read: " + text::fromUtf8(file.error.message())};
    bytes = std::move(file.value);
  }
  Message::DefaultMessenger()->ChangePrinters().Clear();  // the program's output is its own
  std::istringstream stream(std::move(bytes));
  STEPControl_Reader reader;
  if (reader.ReadStream("body", stream) != IFSelect_RetDone) throw ShapeFault{L"the file is no STEP file"};
  reader.TransferRoots();
  const TopoDS_Shape shape = reader.OneShape();
  if (shape.IsNull()) throw ShapeFault{L"the file holds no solid body"};
  return solidsOf(shape);
}

}  // namespace

TopoDS_Shape imported(const Primitive& primitive) {
  TopoDS_Shape shape = read(primitive);
  if (primitive.scale != 1) {
    gp_Trsf scaled;
    scaled.SetScaleFactor(primitive.scale);
    shape = BRepBuilderAPI_Transform(shape, scaled, true).Shape();
  }
  return shape.Moved(location(primitive.placement));
}

}  // namespace headless::geometry
