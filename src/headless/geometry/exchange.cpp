// Trees of parts and assemblies become documents of the library, and those become files.
#include "headless/geometry/exchange.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <IGESCAFControl_Writer.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XSControl_WorkSession.hxx>
#include <map>
#include <set>
#include <sstream>

#include "headless/geometry/exchange_shapes.h"
#include "headless/geometry/library_failure.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless::geometry {
namespace {

// Lengths in mm by which the library knows a unit.
struct Unit {
  double length;
  const char* name;
};
constexpr Unit kUnits[] = {{25.4, "INCH"}, {304.8, "FT"}, {1000, "M"}, {1e6, "KM"}, {0.001, "UM"}, {10, "CM"}};

const char* unitName(double length) {
  for (const Unit& unit : kUnits)
    if (std::abs(length - unit.length) < 1e-9 * unit.length) return unit.name;
  return "MM";
}

// Puts a tree into a document of the library.
class TreeWriter {
 public:
  TreeWriter(const ExchangeDocument& document, const ExchangeForm& form)
      : shapes_(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
        colors_(XCAFDoc_DocumentTool::ColorTool(document->Main())),
        form_(form) {}

  // False: the tree holds nothing that is to be written.
  bool add(const ExchangeNode& root) {
    const bool any = form_.flat ? addFlat(root, {}) : !label(root).IsNull();
    shapes_->UpdateAssemblies();
    return any;
  }

 private:
  bool addFlat(const ExchangeNode& node, const TopLoc_Location& place) {
    bool any = false;
    if (node.body) {
      const TopoDS_Shape shape = shapeOf(node);
      if (!shape.IsNull()) entered(node, BRepBuilderAPI_Transform(shape, place.Transformation(), true).Shape());
      any = !shape.IsNull();
    }
    for (const ExchangeMember& member : node.members)
      any = addFlat(*member.node, place * location(inMillimetres(member.place, node.unit))) || any;
    return any;
  }

  // Null for a node that holds nothing.
  TDF_Label label(const ExchangeNode& node) {
    if (const auto known = labels_.find(&node); known != labels_.end()) return known->second;
    const TDF_Label made = node.body ? part(node) : assembly(node);
    return labels_.emplace(&node, made).first->second;
  }
  TDF_Label part(const ExchangeNode& node) {
    const TopoDS_Shape shape = shapeOf(node);
    return shape.IsNull() ? TDF_Label() : entered(node, shape);
  }
  TDF_Label assembly(const ExchangeNode& node) {
    std::vector<std::pair<TDF_Label, const ExchangeMember*>> members;
    for (const ExchangeMember& member : node.members)
      if (const TDF_Label inner = label(*member.node); !inner.IsNull()) members.emplace_back(inner, &member);
    if (members.empty()) return {};
    const TDF_Label made = shapes_->NewShape();
    describe(made, node);
    for (const auto& [inner, member] : members) {
      const TDF_Label component = shapes_->AddComponent(made, inner, location(inMillimetres(member->place, node.unit)));
      setName(component, member->node->name);
    }
    return made;
  }

  TDF_Label entered(const ExchangeNode& node, const TopoDS_Shape& shape) {
    const TDF_Label made = shapes_->NewShape();
    shapes_->SetShape(made, shape);
    describe(made, node);
    colorFaces(made, node, shape);
    return made;
  }
  void describe(const TDF_Label& made, const ExchangeNode& node) {
    setName(made, node.name);
    if (!node.color) return;
    colors_->SetColor(made, quantity(*node.color), XCAFDoc_ColorSurf);
  }
  // shape: the node's, whose faces come in the order of its body's. A number that no face has colours nothing.
  void colorFaces(const TDF_Label& made, const ExchangeNode& node, const TopoDS_Shape& shape) {
    if (node.faceColors.empty()) return;
    const std::map<int, Rgb> wanted(node.faceColors.begin(), node.faceColors.end());
    int number = 0;
    for (TopExp_Explorer at(shape, TopAbs_FACE); at.More(); at.Next()) {
      const auto found = wanted.find(++number);
      if (found == wanted.end()) continue;
      const TDF_Label face = shapes_->AddSubShape(made, at.Current());
      if (!face.IsNull()) colors_->SetColor(face, quantity(found->second), XCAFDoc_ColorSurf);
    }
  }
  static Quantity_Color quantity(const Rgb& color) { return {color[0], color[1], color[2], Quantity_TOC_sRGB}; }

  // What is to be written of a part's body, in mm. Parts that are made alike share a shape, and the library would take
  // them for one: each node has its own.
  TopoDS_Shape shapeOf(const ExchangeNode& node) {
    TopoDS_Shape shape = node.body->shape;
    if (node.unit != 1)
      shape = scaled(shape, node.unit);
    else if (!seen_.insert(shape.TShape().get()).second)
      shape = BRepBuilderAPI_Copy(shape, false).Shape();
    return form_.format == ExchangeFormat::step ? shape : chosen(shape);
  }
  TopoDS_Shape chosen(const TopoDS_Shape& shape) const {
    const bool hasQuilts = TopExp_Explorer(shape, TopAbs_SHELL, TopAbs_SOLID).More();
    if (form_.solids && !form_.wireframe && (form_.quilts || !hasQuilts)) return shape;
    TopoDS_Compound all;
    const BRep_Builder builder;
    builder.MakeCompound(all);
    const auto take = [&](TopAbs_ShapeEnum kind, TopAbs_ShapeEnum except = TopAbs_SHAPE) {
      TopTools_IndexedMapOfShape found;  // an edge of two faces once
      for (TopExp_Explorer at(shape, kind, except); at.More(); at.Next()) found.Add(at.Current());
      for (int i = 1; i <= found.Extent(); ++i) builder.Add(all, found(i));
      return !found.IsEmpty();
    };
    const bool solids = form_.solids && take(TopAbs_SOLID);
    const bool faces = !form_.solids && form_.surfaces && take(TopAbs_FACE);
    const bool quilts = form_.quilts && !faces && take(TopAbs_SHELL, TopAbs_SOLID);
    const bool edges = form_.wireframe && take(TopAbs_EDGE);
    return solids || faces || quilts || edges ? all : TopoDS_Shape();
  }

  Handle(XCAFDoc_ShapeTool) shapes_;
  Handle(XCAFDoc_ColorTool) colors_;
  const ExchangeForm& form_;
  std::map<const ExchangeNode*, TDF_Label> labels_;
  std::set<const void*> seen_;
};

Handle(TCollection_HAsciiString) ascii(const std::string& text) { return new TCollection_HAsciiString(text.c_str()); }

// The time of the session's clock, which the library doesn't know.
Handle(TCollection_HAsciiString) now(const char* pattern) {
  return ascii(text::toUtf8(os::localTime(os::clock().seconds(), pattern)));
}

// The library numbers placed members by a count of its process: here each file begins at 1, so that equal trees make
// equal files.
void numberPlacements(const Handle(StepData_StepModel) & model) {
  int number = 0;
  for (int i = 1; i <= model->NbEntities(); ++i) {
    const auto member = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(model->Value(i));
    if (!member.IsNull()) member->SetId(ascii(std::to_string(++number)));
  }
}

ExchangeBytes stepBytes(const ExchangeDocument& document, const std::wstring& name) {
  STEPCAFControl_Writer writer;
  if (!writer.Transfer(document, STEPControl_AsIs)) return {{}, L"the library can't make STEP of it"};
  const Handle(StepData_StepModel) model = writer.ChangeWriter().Model();
  numberPlacements(model);
  APIHeaderSection_MakeHeader header(model);
  header.SetName(ascii(text::toUtf8(name)));
  header.SetTimeStamp(now("%Y-%m-%dT%H:%M:%S"));  // ISO 8601, as ISO 10303-21 wants it
  header.SetOriginatingSystem(ascii("Kelvane User"));
  header.SetAuthorValue(1, ascii(""));
  header.SetOrganizationValue(1, ascii(""));
  StepData_StepWriter out(model);
  out.SendModel(Handle(StepData_Protocol)::DownCast(writer.ChangeWriter().WS()->Protocol()));
  std::ostringstream stream;
  if (!out.Print(stream)) return {{}, L"the library can't write it"};
  return {std::move(stream).str(), {}};
}

ExchangeBytes igesBytes(const ExchangeDocument& document) {
  IGESCAFControl_Writer writer;
  if (!writer.Transfer(document)) return {{}, L"the library can't make IGES of it"};
  writer.ComputeModel();
  IGESData_GlobalSection facts = writer.Model()->GlobalSection();
  facts.SetDate(now("%Y%m%d.%H%M%S"));
  if (facts.HasLastChangeDate()) facts.SetLastChangeDate(facts.Date());
  writer.Model()->SetGlobalSection(facts);
  std::ostringstream stream;
  if (!writer.Write(stream)) return {{}, L"the library can't write it"};
  return {std::move(stream).str(), {}};
}

void setUp(const ExchangeForm& form, double unit) {
  prepareLibrary();
  Interface_Static::SetCVal("write.step.unit", unitName(unit));
  Interface_Static::SetCVal("write.step.schema", form.ap242 ? "AP242DIS" : "AP214IS");
  Interface_Static::SetCVal("write.iges.unit", unitName(unit));
  Interface_Static::SetCVal("write.iges.brep.mode", form.solids ? "BRep" : "Faces");
}

}  // namespace

ExchangeBytes writeExchange(const ExchangeNode& root, const ExchangeForm& form) {
  ExchangeBytes written;
  try {
    guarded([&] {
      setUp(form, root.unit);
      const ExchangeDocument document;
      if (!TreeWriter(document, form).add(root))
        written.fault = L"there is no geometry to write";
      else
        written = form.format == ExchangeFormat::step ? stepBytes(document, root.name) : igesBytes(document);
    });
  } catch (const std::exception& failure) {
    written = {{}, L"it can't be written: " + text::fromUtf8(failure.what())};
  }
  return written;
}

ExchangeBytes stepText(const Body& body, double unit) {
  ExchangeNode node;
  node.name = L"body";
  node.unit = unit;
  node.body = std::make_shared<Body>(body.shape);
  return writeExchange(node, {});
}

}  // namespace headless::geometry
