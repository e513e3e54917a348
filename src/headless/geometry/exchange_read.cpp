// Files of other systems become trees of parts and assemblies.
#include <BRepBuilderAPI_MakeSolid.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepClass3d_SolidClassifier.hxx>
#include <IGESCAFControl_Reader.hxx>
#include <IGESData_IGESModel.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <climits>
#include <cmath>
#include <sstream>
#include <unordered_map>

#include "headless/geometry/exchange.h"
#include "headless/geometry/exchange_shapes.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless::geometry {
namespace {

// Faces whose edges are no farther apart, in mm, belong together.
constexpr double kSewing = 1e-2;
// Assemblies nested deeper are no assemblies of anybody.
constexpr int kDeepest = 200;

// ---- is the file whole?

std::string_view withoutBlanksAtEnd(std::string_view text) {
  const auto last = text.find_last_not_of(" \t\r\n\0");
  return text.substr(0, last == text.npos ? 0 : last + 1);
}

// Why a file can't be of the format; empty for none. The library itself takes much for a file and reads part of it.
std::wstring stepFault(std::string_view bytes) {
  const auto first = bytes.find("ISO-10303-21;");
  if (first == bytes.npos || bytes.substr(0, first).find_first_not_of(" \t\r\n\xEF\xBB\xBF") != bytes.npos)
    return L"the file is no STEP file";
  if (!withoutBlanksAtEnd(bytes).ends_with("END-ISO-10303-21;")) return L"the file is cut: its end is missing";
  return {};
}

// Lines of IGES have the letter of their section in column 73.
constexpr std::size_t kSectionColumn = 72;
char sectionOf(std::string_view line) { return line.size() > kSectionColumn ? line[kSectionColumn] : '\0'; }

std::wstring igesFault(std::string_view bytes) {
  if (sectionOf(bytes.substr(0, bytes.find('\n'))) != 'S') return L"the file is no IGES file";
  const std::string_view whole = withoutBlanksAtEnd(bytes);
  const auto last = whole.rfind('\n');
  if (sectionOf(last == whole.npos ? whole : whole.substr(last + 1)) != 'T')
    return L"the file is cut: its end is missing";
  return {};
}

// ---- its shapes

// What a file's faces close around, where they aren't said to be a solid.
TopoDS_Shape sewnSolids(const TopoDS_Shape& shape) {
  BRepBuilderAPI_Sewing sewing(kSewing);
  bool any = false;
  for (TopExp_Explorer at(shape, TopAbs_FACE); at.More(); at.Next(), any = true) sewing.Add(at.Current());
  if (!any) return {};
  sewing.Perform();
  TopoDS_Compound solids;
  const BRep_Builder builder;
  builder.MakeCompound(solids);
  any = false;
  for (TopExp_Explorer at(sewing.SewedShape(), TopAbs_SHELL); at.More(); at.Next()) {
    const TopoDS_Shell shell = TopoDS::Shell(at.Current());
    if (!shell.Closed()) continue;
    TopoDS_Solid solid = BRepBuilderAPI_MakeSolid(shell).Solid();
    BRepClass3d_SolidClassifier inside(solid);
    inside.PerformInfinitePoint(kSewing);
    if (inside.State() == TopAbs_IN) solid.Reverse();  // its faces look into it
    builder.Add(solids, solid);
    any = true;
  }
  return any ? solids : TopoDS_Shape();
}

BodyPtr bodyOf(const TopoDS_Shape& shape) {
  TopoDS_Shape solids = solidsIn(shape);
  if (solids.IsNull()) solids = sewnSolids(shape);
  return solids.IsNull() ? nullptr : std::make_shared<Body>(solids);
}

creo::ProTransform placeOf(const TopLoc_Location& location) {
  const gp_Trsf moved = location.Transformation();
  const auto axis = [&moved](double x, double y, double z) -> creo::ProVector {
    const gp_Vec turned = gp_Vec(x, y, z).Transformed(moved);
    return {turned.X() + 0.0, turned.Y() + 0.0, turned.Z() + 0.0};
  };
  const gp_XYZ& origin = moved.TranslationPart();
  return {axis(1, 0, 0), axis(0, 1, 0), axis(0, 0, 1), {origin.X() + 0.0, origin.Y() + 0.0, origin.Z() + 0.0}};
}

// A document of the library as a tree. What has neither body nor members is left out.
class TreeReader {
 public:
  explicit TreeReader(const ExchangeDocument& document)
      : shapes_(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
        colors_(XCAFDoc_DocumentTool::ColorTool(document->Main())) {}

  ExchangeNodePtr root() {
    TDF_LabelSequence labels;
    shapes_->GetFreeShapes(labels);
    auto all = std::make_shared<ExchangeNode>();
    for (const TDF_Label& label : labels) take(*all, label, 0);
    if (all->members.empty()) return nullptr;
    return all->members.size() == 1 ? all->members.front().node : all;
  }

 private:
  void take(ExchangeNode& into, const TDF_Label& label, int depth) {
    TDF_Label product = label;
    XCAFDoc_ShapeTool::GetReferredShape(label, product);
    if (ExchangeNodePtr node = of(product, depth))
      into.members.push_back({std::move(node), placeOf(XCAFDoc_ShapeTool::GetLocation(label))});
  }

  ExchangeNodePtr of(const TDF_Label& label, int depth) {
    if (depth > kDeepest) throw std::runtime_error("its assemblies are nested too deep");
    if (const auto known = nodes_.find(label); known != nodes_.end()) return known->second;
    auto node = std::make_shared<ExchangeNode>();
    node->name = nameOf(label);
    if (XCAFDoc_ShapeTool::IsAssembly(label)) {
      TDF_LabelSequence components;
      XCAFDoc_ShapeTool::GetComponents(label, components);
      for (const TDF_Label& component : components) take(*node, component, depth + 1);
    } else {
      const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
      node->body = bodyOf(shape);
      node->color = colorOf(label, shape);
      if (node->body) node->faceColors = faceColorsOf(node->body->shape, node->color);
    }
    const bool empty = !node->body && node->members.empty();
    return nodes_[label] = empty ? nullptr : std::move(node);
  }

  std::optional<Rgb> colorOf(const TDF_Label& label, const TopoDS_Shape& shape) {
    Quantity_Color color;
    for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen})
      if (colors_->GetColor(label, type, color)) return values(color);
    // Some systems give it to the solids inside the product, or to their faces, as IGES does.
    auto inside = commonColor(shape, TopAbs_SOLID);
    return inside ? inside : commonColor(shape, TopAbs_FACE);
  }
  // The colour that all of a kind have; nothing where one has none or another one.
  std::optional<Rgb> commonColor(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    std::optional<Quantity_Color> all;
    for (TopExp_Explorer at(shape, kind); at.More(); at.Next()) {
      const auto color = ownColor(at.Current());
      if (!color || (all && *all != *color)) return std::nullopt;
      all = color;
    }
    if (!all) return std::nullopt;
    return values(*all);
  }
  std::optional<Quantity_Color> ownColor(const TopoDS_Shape& shape) {
    Quantity_Color color;
    for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen})
      if (colors_->GetColor(shape, type, color)) return color;
    return std::nullopt;
  }
  // Of the faces that look otherwise than the whole.
  std::vector<std::pair<int, Rgb>> faceColorsOf(const TopoDS_Shape& body, const std::optional<Rgb>& whole) {
    std::vector<std::pair<int, Rgb>> found;
    int number = 0;
    for (TopExp_Explorer at(body, TopAbs_FACE); at.More(); at.Next()) {
      ++number;
      const auto color = ownColor(at.Current());
      if (color && values(*color) != whole) found.emplace_back(number, values(*color));
    }
    return found;
  }
  static Rgb values(const Quantity_Color& color) {
    std::array<double, 3> parts{};
    color.Values(parts[0], parts[1], parts[2], Quantity_TOC_sRGB);
    // The library keeps them as floats: what it rounds off would show.
    for (double& part : parts) part = std::round(part * 1e4) / 1e4;
    return parts;
  }

  struct Hash {
    std::size_t operator()(const TDF_Label& label) const {
      return static_cast<std::size_t>(TDF_LabelMapHasher::HashCode(label, INT_MAX));
    }
  };
  struct Same {
    bool operator()(const TDF_Label& a, const TDF_Label& b) const { return a.IsEqual(b); }
  };
  Handle(XCAFDoc_ShapeTool) shapes_;
  Handle(XCAFDoc_ColorTool) colors_;
  std::unordered_map<TDF_Label, ExchangeNodePtr, Hash, Same> nodes_;
};

// ---- the two formats

// The length in mm of a unit as STEP files call it; 1 for one that isn't known.
double stepUnit(STEPControl_Reader& reader) {
  TColStd_SequenceOfAsciiString lengths, angles, solidAngles;
  reader.FileUnits(lengths, angles, solidAngles);
  if (lengths.IsEmpty()) return 1;
  TCollection_AsciiString name = lengths.First();
  name.LowerCase();
  constexpr std::pair<std::string_view, double> kUnits[] = {
      {"millimetre", 1}, {"inch", 25.4},        {"centimetre", 10}, {"metre", 1000},   {"meter", 1000},
      {"foot", 304.8},   {"micrometre", 0.001}, {"kilometre", 1e6}, {"millimeter", 1}, {"centimeter", 10}};
  for (const auto& [known, length] : kUnits)
    if (name == known.data()) return length;
  return 1;
}

double igesUnit(const Handle(Interface_InterfaceModel) & model) {
  const auto iges = Handle(IGESData_IGESModel)::DownCast(model);
  if (iges.IsNull()) return 1;
  constexpr std::pair<int, double> kUnits[] = {{1, 25.4}, {4, 304.8}, {6, 1000}, {7, 1e6}, {9, 0.001}, {10, 10}};
  for (const auto& [flag, length] : kUnits)
    if (iges->GlobalSection().UnitFlag() == flag) return length;
  return 1;
}

// Fills the document; a fault, or empty.
std::wstring loadStep(const std::string& bytes, const ExchangeDocument& document, double& unit) {
  STEPCAFControl_Reader reader;
  std::istringstream stream(bytes);
  if (reader.ChangeReader().ReadStream("model", stream) != IFSelect_RetDone) return L"the file is no STEP file";
  unit = stepUnit(reader.ChangeReader());
  return reader.Transfer(document) ? L"" : L"the file holds no model";
}

std::wstring loadIges(const std::wstring& path, const ExchangeDocument& document, double& unit) {
  IGESCAFControl_Reader reader;
  if (reader.ReadFile(os::mounts().machine(path).c_str()) != IFSelect_RetDone) return L"the file is no IGES file";
  unit = igesUnit(reader.Model());
  return reader.Transfer(document) ? L"" : L"the file holds no model";
}

ExchangeRead readWhole(const std::wstring& path, const std::string& bytes, ExchangeFormat format) {
  ExchangeRead read;
  guarded([&] {
    prepareLibrary();
    const ExchangeDocument document;
    read.fault =
        format == ExchangeFormat::step ? loadStep(bytes, document, read.unit) : loadIges(path, document, read.unit);
    if (!read.fault.empty()) return;
    read.root = TreeReader(document).root();
    if (!read.root) read.fault = L"the file holds no solid body";
  });
  return read;
}

// ---- one body of many

bool addSolids(TopoDS_Compound& all, const ExchangeNode& node, const TopLoc_Location& place) {
  bool any = false;
  if (node.body) {
    TopoDS_Shape shape = node.unit == 1 ? node.body->shape : scaled(node.body->shape, node.unit);
    for (TopExp_Explorer at(shape.Moved(place), TopAbs_SOLID); at.More(); at.Next(), any = true)
      BRep_Builder().Add(all, at.Current());
  }
  for (const ExchangeMember& member : node.members)
    any = addSolids(all, *member.node, place * location(inMillimetres(member.place, node.unit))) || any;
  return any;
}

}  // namespace

ExchangeRead readExchange(const std::wstring& path, ExchangeFormat format) {
  const auto bytes = os::files().read(path);
  if (!bytes) return {nullptr, 1, L"the file can't be read: " + text::fromUtf8(bytes.error.message())};
  if (bytes.value.empty()) return {nullptr, 1, L"the file is empty"};
  std::wstring fault = format == ExchangeFormat::step ? stepFault(bytes.value) : igesFault(bytes.value);
  if (!fault.empty()) return {nullptr, 1, std::move(fault)};
  try {
    return readWhole(path, bytes.value, format);
  } catch (const std::exception& failure) {
    return {nullptr, 1, L"it can't be read: " + text::fromUtf8(failure.what())};
  }
}

BodyPtr joined(const ExchangeNode& root) {
  TopoDS_Compound all;
  BRep_Builder().MakeCompound(all);
  BodyPtr body;
  guarded([&] {
    if (addSolids(all, root, {})) body = std::make_shared<Body>(all);
  });
  return body;
}

}  // namespace headless::geometry
