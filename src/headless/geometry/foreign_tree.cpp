#include "headless/geometry/foreign_tree.h"

#include <BRep_Builder.hxx>
#include <Quantity_Color.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDF_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <cmath>
#include <unordered_map>

#include "headless/geometry/foreign_body.h"
#include "text/format.h"

namespace headless::geometry {
namespace {

// Assemblies nested deeper are no assemblies of anybody.
constexpr int kDeepest = 200;

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
  TreeReader(const ExchangeDocument& document, ForeignBodies& bodies)
      : shapes_(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
        colors_(XCAFDoc_DocumentTool::ColorTool(document->Main())),
        bodies_(bodies) {}

  // Null where the file holds no body. sewsFaces: faces that stand alone are one body, as IGES files have them.
  ExchangeNodePtr root(bool sewsFaces) {
    TDF_LabelSequence labels;
    shapes_->GetFreeShapes(labels);
    auto all = std::make_shared<ExchangeNode>();
    std::vector<TDF_Label> loose;
    for (const TDF_Label& label : labels) {
      if (sewsFaces && isLoose(label))
        loose.push_back(label);
      else
        take(*all, label, 0);
    }
    if (ExchangeNodePtr node = together(loose)) all->members.push_back({std::move(node), {}});
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

  static bool isLoose(const TDF_Label& label) {
    return !XCAFDoc_ShapeTool::IsAssembly(label) && !XCAFDoc_ShapeTool::IsReference(label) &&
           !TopExp_Explorer(XCAFDoc_ShapeTool::GetShape(label), TopAbs_SOLID).More();
  }
  ExchangeNodePtr together(const std::vector<TDF_Label>& labels) {
    if (labels.empty()) return nullptr;
    TopoDS_Compound all;
    BRep_Builder().MakeCompound(all);
    for (const TDF_Label& label : labels) BRep_Builder().Add(all, XCAFDoc_ShapeTool::GetShape(label));
    auto node = std::make_shared<ExchangeNode>();
    if (labels.size() == 1) node->name = nameOf(labels.front());
    fill(*node, all, labels.size() == 1 ? labels.front() : TDF_Label());
    return node->body ? std::move(node) : nullptr;
  }

  ExchangeNodePtr of(const TDF_Label& label, int depth) {
    if (depth > kDeepest) throw std::runtime_error("its assemblies are nested too deep");
    const std::string place = placeIn(label);
    if (const auto known = nodes_.find(place); known != nodes_.end()) return known->second;
    auto node = std::make_shared<ExchangeNode>();
    node->name = nameOf(label);
    if (XCAFDoc_ShapeTool::IsAssembly(label)) {
      TDF_LabelSequence components;
      XCAFDoc_ShapeTool::GetComponents(label, components);
      for (const TDF_Label& component : components) take(*node, component, depth + 1);
    } else {
      fill(*node, XCAFDoc_ShapeTool::GetShape(label), label);
    }
    const bool empty = !node->body && node->members.empty();
    return nodes_[place] = empty ? nullptr : std::move(node);
  }

  void fill(ExchangeNode& node, const TopoDS_Shape& shape, const TDF_Label& label) {
    node.body = bodyOf(shape, node.name);
    node.color = colorOf(label, shape);
    if (node.body) node.faceColors = faceColorsOf(node.body->shape, node.color);
  }
  BodyPtr bodyOf(const TopoDS_Shape& shape, const std::wstring& name) {
    try {
      const TopoDS_Shape body = bodies_.take(shape);
      return body.IsNull() ? nullptr : std::make_shared<Body>(body);
    } catch (const ShapeFault& fault) {
      throw ShapeFault{name.empty() ? fault.reason : text::format(L"'%s': %s", name, fault.reason)};
    }
  }
  // label: of the shape; null for several.
  std::optional<Rgb> colorOf(const TDF_Label& label, const TopoDS_Shape& shape) {
    Quantity_Color color;
    for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen})
      if (!label.IsNull() && colors_->GetColor(label, type, color)) return values(color);
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

  // "0:1:1:3". The library's own hash of labels has another name in each of its releases.
  static std::string placeIn(const TDF_Label& label) {
    TCollection_AsciiString entry;
    TDF_Tool::Entry(label, entry);
    return entry.ToCString();
  }
  Handle(XCAFDoc_ShapeTool) shapes_;
  Handle(XCAFDoc_ColorTool) colors_;
  ForeignBodies& bodies_;
  std::unordered_map<std::string, ExchangeNodePtr> nodes_;  // by the places of their labels
};

// ---- bodies as texts

// What each body of the tree holds of a kind, where it stands.
void add(TopoDS_Compound& all, const ExchangeNode& node, const TopLoc_Location& place, TopAbs_ShapeEnum kind,
         TopAbs_ShapeEnum except) {
  if (node.body)
    for (TopExp_Explorer at(node.body->shape.Moved(place), kind, except); at.More(); at.Next())
      BRep_Builder().Add(all, at.Current());
  for (const ExchangeMember& member : node.members)
    add(all, *member.node, place * location(member.place), kind, except);
}

// The tree as one part: solids, then quilts.
ExchangeNodePtr joined(const ExchangeNode& root) {
  TopoDS_Compound all;
  BRep_Builder().MakeCompound(all);
  add(all, root, {}, TopAbs_SOLID, TopAbs_SHAPE);
  add(all, root, {}, TopAbs_SHELL, TopAbs_SOLID);
  auto part = std::make_shared<ExchangeNode>();
  part->name = root.name;
  part->color = root.color;
  part->faceColors = root.faceColors;
  part->body = std::make_shared<Body>(all);
  return part;
}

// The same tree with texts in place of bodies.
class Texts {
 public:
  ExchangeNodePtr of(const ExchangeNodePtr& node) {
    if (const auto known = made_.find(node.get()); known != made_.end()) return known->second;
    auto made = std::make_shared<ExchangeNode>(*node);
    if (made->body) {
      ExchangeBytes text = stepText(*made->body, 1);
      if (!text.fault.empty()) throw ShapeFault{std::move(text.fault)};
      made->step = std::move(text.bytes);
      made->body = nullptr;
    }
    for (ExchangeMember& member : made->members) member.node = of(member.node);
    return made_[node.get()] = std::move(made);
  }

 private:
  std::unordered_map<const ExchangeNode*, ExchangeNodePtr> made_;
};

}  // namespace

ExchangeRead foreignTree(const ExchangeDocument& document, const Loaded& loaded, ExchangeFormat format, ImportAs as) {
  ForeignBodies bodies(loaded.resolution);
  ExchangeNodePtr root = TreeReader(document, bodies).root(format == ExchangeFormat::iges);
  if (!root) throw ShapeFault{L"the file holds no body"};
  if (as == ImportAs::part) root = joined(*root);
  ExchangeRead read;
  read.root = Texts().of(root);
  read.unit = loaded.unit;
  read.warnings = loaded.warnings;
  for (std::wstring& warning : bodies.warnings()) read.warnings.push_back(std::move(warning));
  return read;
}

}  // namespace headless::geometry
