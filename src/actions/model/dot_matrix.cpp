// A QR code in a solid: a datum point on a coordinate system, patterned over the code's dark modules.
#include <algorithm>
#include <array>
#include <optional>

#include "actions/drawing/code_text.h"
#include "actions/environment/macro.h"
#include "core/log.h"
#include "creo/ProFeatureCreate.h"
#include "creo/ProLayer.h"
#include "creo/ProXsec.h"
#include "creo/guards.h"
#include "text/format.h"

namespace actions {
namespace {

using creo::ProElement;
using creo::ProError;
using creo::ProFeature;
using creo::ProItemType;
using creo::ProModelitem;

constexpr double kPlaneOffset = 10;  // from the coordinate system, in the model's units
constexpr std::wstring_view kNoPoint = L"Can't create the point.";

void fail(std::wstring_view text) { core::logWrite(text, core::kError); }

// ---- element trees

// Puts a tree together. Its first failure is the tree's, and nothing is added from then on.
class Tree {
 public:
  explicit Tree(int id) {
    auto root = creo::ProElementAlloc(id);
    error_ = root.error;
    root_ = std::move(root.value);
  }
  void integer(int id, int value) {
    add(id, [&](ProElement& element) { return creo::ProElementIntegerSet(element, value); });
  }
  void real(int id, double value) {
    add(id, [&](ProElement& element) { return creo::ProElementDoubleSet(element, value); });
  }
  void text(int id, const std::wstring& value) {
    add(id, [&](ProElement& element) { return creo::ProElementWstringSet(element, value); });
  }
  void reference(int id, const creo::ProReference& reference) {
    add(id, [&](ProElement& element) {
      auto value = creo::ProValueAlloc();
      if (!value) return value.error;
      if (const ProError result = creo::ProValueDataSet(value.value, reference)) return result;
      return creo::ProElementValueSet(element, value.value);
    });
  }
  void tree(Tree child) {
    if (!error_) error_ = child.error_;
    if (!error_) error_ = creo::ProElemtreeElementAdd(root_, std::move(child.root_));
  }
  [[nodiscard]] ProError error() const { return error_; }
  [[nodiscard]] const ProElement& root() const { return root_; }

 private:
  template <class Set>
  void add(int id, Set set) {
    if (error_) return;
    auto element = creo::ProElementAlloc(id);
    error_ = element ? set(element.value) : element.error;
    if (!error_) error_ = creo::ProElemtreeElementAdd(root_, std::move(element.value));
  }

  ProError error_ = creo::ProNoError;
  ProElement root_;
};

creo::Got<creo::ProReference> referenceTo(const ProModelitem& item) {
  const auto selection = creo::ProSelectionAlloc(item);
  if (!selection) return selection.error;
  return creo::ProSelectionToReference(selection.value);
}

// ---- default layers

// New things come to lie on one layer; the destructor gives the model its default layers back.
class DefaultLayers {
 public:
  explicit DefaultLayers(creo::ProMdl model) : model_(model) {
    for (std::size_t i = 0; i < kKinds.size(); ++i) saved_[i] = creo::ProLayerDefLayerGet(model, kKinds[i]);
  }
  ~DefaultLayers() {
    for (std::size_t i = 0; i < changed_; ++i) {
      if (creo::ProLayerDefLayerSet(model_, kKinds[i], saved_[i].value) == creo::ProNoError) continue;
      fail(text::format(L"Can't give the default layer of kind %d back: %s", kKinds[i], saved_[i].value));
    }
  }
  DefaultLayers(const DefaultLayers&) = delete;
  DefaultLayers& operator=(const DefaultLayers&) = delete;
  // Nothing is changed where a former one can't be told.
  ProError change(const std::wstring& layer) {
    for (const auto& entry : saved_)
      if (!entry && entry.error != creo::ProNotFound) return entry.error;
    for (; changed_ < kKinds.size(); ++changed_)
      if (const ProError result = creo::ProLayerDefLayerSet(model_, kKinds[changed_], layer)) return result;
    return creo::ProNoError;
  }

 private:
  static constexpr std::array kKinds = {creo::kCsysLayer, creo::kPlaneLayer, creo::kPointLayer,
                                        creo::kPointFeatureLayer, creo::kPatternLayer};
  creo::ProMdl model_;
  std::array<creo::Got<std::wstring>, kKinds.size()> saved_;
  std::size_t changed_ = 0;
};

// ---- the matrix

class DotMatrix {
 public:
  DotMatrix(const Task& task, const ProModelitem& csys, const std::wstring& name)
      : task_(task),
        model_(task.model()),
        csys_(csys),
        plane_(text::format(L"%s_%s", name, L"DTM")),
        point_(text::format(L"%s_%s", name, L"PNT")),
        layer_(text::format(L"%s_%s", name, L"LAY")) {}

  // A code that can't be made whole, which has its error line, leaves nothing behind.
  void make(const barcode::QrCode& code, double module) {
    if (isTaken(ProItemType::feature, plane_) || isTaken(ProItemType::feature, point_) ||
        isTaken(ProItemType::layer, layer_))
      return;
    const auto layer = creo::ProLayerCreate(model_, layer_);
    if (!layer) return fail(text::format(L"Can't create the layer %s", layer_));
    bool isWhole = false;
    {
      DefaultLayers layers(model_);
      if (layers.change(layer_) != creo::ProNoError)
        fail(L"Can't set the default layers");
      else
        isWhole = build(code, module);
      if (isWhole && task_.attribute(L"runmapkeys") == L"1") runMapkeys();
    }
    if (!isWhole) return takeBack(layer.value);
    if (creo::ProLayerDisplaystatusSet(layer.value, creo::ProLayerDisplay::blank) != creo::ProNoError)
      fail(text::format(L"Can't blank the layer %s", layer_));
  }

 private:
  bool isTaken(ProItemType type, const std::wstring& name) const {
    if (!creo::ProModelitemByNameInit(model_, type, name)) return false;
    fail(text::format(L"There is a dot matrix on the coordinate system already: %s", name));
    return true;
  }
  void takeBack(const creo::ProLayer& layer) const {
    if (!made_.empty() && creo::ProFeatureDelete(model_, made_) != creo::ProNoError)
      fail(L"What there is of the dot matrix can't be deleted");
    creo::ProLayerDelete(layer);
  }

  bool build(const barcode::QrCode& code, double module) {
    const auto csys = referenceTo(csys_);
    if (!csys) return fail(L"Can't find Coordinate system."), false;
    return createPoint(csys.value) && createPattern(code, module) && createPlane(csys.value);
  }
  static Tree featureTree(int type, const std::wstring& name, const creo::ProReference& csys) {
    Tree tree(creo::kFeatureTree);
    tree.integer(creo::kFeatureTypeElement, type);
    tree.text(creo::kFeatureNameElement, name);
    tree.reference(creo::kFeatureReferenceElement, csys);
    return tree;
  }
  // Remembers what was made.
  bool keep(const creo::Got<ProFeature>& feature, std::wstring_view failure) {
    if (!feature) return fail(failure), false;
    made_.push_back(feature.value.id);
    return true;
  }
  creo::Got<ProFeature> create(const Tree& tree) const {
    if (tree.error()) return tree.error();
    return creo::ProFeatureCreate(model_, tree.root());
  }
  bool createPoint(const creo::ProReference& csys) {
    Tree tree = featureTree(creo::kDatumPointFeature, point_, csys);
    for (const int axis : {creo::kOffsetXElement, creo::kOffsetYElement, creo::kOffsetZElement}) tree.real(axis, 0);
    return keep(create(tree), kNoPoint);
  }
  bool createPlane(const creo::ProReference& csys) {
    Tree tree = featureTree(creo::kDatumPlaneFeature, plane_, csys);
    tree.real(creo::kOffsetDistanceElement, kPlaneOffset);
    return keep(create(tree), L"Can't create the datum pane.");
  }
  bool createPattern(const barcode::QrCode& code, double module) {
    const ProFeature point{model_, made_.front()};
    Tree tree(creo::kPatternTree);
    tree.integer(creo::kPatternTypeElement, static_cast<int>(creo::ProPatternType::table));
    ProError result = creo::ProFeatureDimensionVisit(point, [&](const creo::ProDimension& dimension) {
      const auto reference = referenceTo({ProItemType::dimension, dimension.id, dimension.owner, {}});
      if (reference) tree.reference(creo::kTableDimensionElement, reference.value);
      return reference.error;
    });
    addRows(tree, code, module);
    if (!result) result = tree.error();
    return keep(result ? result : creo::ProPatternCreate(point, creo::ProPatternType::table, tree.root()), kNoPoint);
  }
  // A row for each dark module but the first of all, which the point itself stands for.
  static void addRows(Tree& tree, const barcode::QrCode& code, double module) {
    int number = 0;
    for (int row = 0; row < code.width; ++row)
      for (int column = 0; column < code.width; ++column) {
        if (!code.isDark(row, column) || (row == 0 && column == 0)) continue;
        Tree member(creo::kTableRowElement);
        member.integer(creo::kMemberNumberElement, ++number);
        for (const double value : {column * module, row * module, 0.0}) member.real(creo::kMemberValueElement, value);
        tree.tree(std::move(member));
      }
  }

  // ---- mapkeys

  void select(const std::vector<creo::ProSelection>& selections) const {
    creo::ProSelbufferClear();
    for (const creo::ProSelection& selection : selections)
      if (creo::ProSelbufferSelectionAdd(selection) != creo::ProNoError) fail(L"The dot matrix can't be selected");
  }
  // The second list finds selected what the first one leaves so; the third one that, and the plane. Afterwards the user
  // has again what was selected before.
  void runMapkeys() const {
    creo::SelectionGuard before;
    const creo::ProSelection point = {{ProItemType::feature, made_.front(), model_, {}}, {}};
    const creo::ProSelection plane = {{ProItemType::feature, made_.back(), model_, {}}, {}};
    select({point, plane});
    runMapkeyMacro(task_, model_, L"mapkey1c", L"mapkey1_");
    std::vector<creo::ProSelection> left = creo::ProSelbufferSelectionsGet().value;
    runMapkeyMacro(task_, model_, L"mapkey2c", L"mapkey2_");
    const auto isPlane = [&](const creo::ProSelection& candidate) {
      return candidate.item.type == plane.item.type && candidate.item.id == plane.item.id &&
             candidate.item.owner == model_;
    };
    std::erase_if(left, isPlane);
    left.push_back(plane);
    select(left);
    runMapkeyMacro(task_, model_, L"mapkey3c", L"mapkey3_");
    creo::ProSelbufferClear();
    selectAgain(before);
  }

  const Task& task_;
  creo::ProMdl model_;
  ProModelitem csys_;
  std::wstring plane_, point_, layer_;
  std::vector<int> made_;  // ids: the point, its pattern, the plane
};

Outcome createQRdotmatrix(const Task& task) {
  const auto code = qrCodeOf(task);
  const auto module = !code ? std::nullopt : task.has(L"pixelsize") ? codeLength(task, L"pixelsize") : 1.0;
  if (!module) return done;
  const std::wstring name(task.attribute(L"csn"));
  const auto csys = creo::ProModelitemByNameInit(task.model(), ProItemType::coordinateSystem, name);
  if (!csys) {
    fail(L"Can't get the specified coordinate system");
    return done;
  }
  DotMatrix(task, csys.value, name).make(*code, *module);
  return done;
}

constexpr Attribute kPlaceOfMatrix[] = {
    {.name = L"csn", .need = Need::needed, .about = "name of the coordinate system"},
};
constexpr Attribute kMatrix[] = {
    {.name = L"pixelsize",
     .kind = Kind::number,
     .about = "distance of two modules in the model's units, above 0; absent: 1"},
    {.name = L"runmapkeys", .kind = Kind::word, .words = L"0|1", .about = "1: the three lists of mapkeys run"},
};
constexpr Attribute countOfLines(std::wstring_view name) {
  return {.name = name, .kind = Kind::integer, .about = "how many lines the list of mapkeys has"};
}
constexpr Attribute lines(std::wstring_view name, std::wstring_view counter, std::string_view about) {
  return {.name = name,
          .kind = Kind::macro,
          .variables = true,
          .numbers = Numbers::counted,
          .counter = counter,
          .about = about};
}
constexpr Attribute kMapkeys[] = {
    countOfLines(L"mapkey1c"),
    lines(L"mapkey1_%d", L"mapkey1c", "the lines of the first list; it finds point and plane selected"),
    countOfLines(L"mapkey2c"),
    lines(L"mapkey2_%d", L"mapkey2c", "those of the second one; what the first one leaves selected is still so"),
    countOfLines(L"mapkey3c"),
    lines(L"mapkey3_%d", L"mapkey3c", "those of the third one; it finds selected what is left, and the plane"),
};
constexpr auto kAttributes = joined(kPlaceOfMatrix, kCodeLines, kQrForm, kStatedLetters, kMatrix, kMapkeys);

constexpr Action kActions[] = {
    {.key = L"createQRdotmatrix",
     .place = 82,
     .title = L"Set QR Code",
     .conditions = {kFilter, kSolids},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::session,
                 .changes = Touched::model | Touched::session | Touched::programs,
                 .known = false,
                 .takenBack = false},
     .about = "makes a QR code in a solid: a datum point, patterned over the code's dark modules",
     .function = &createQRdotmatrix},
};

}  // namespace

std::span<const Action> dotMatrixActions() { return kActions; }

}  // namespace actions
