#include "headless/model/new_features.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "creo/ProFeatureEdit.h"
#include "creo/ProLayer.h"
#include "creo/ProXsec.h"
#include "headless/model/datums.h"
#include "headless/model/features.h"
#include "headless/model/insert_feature.h"
#include "headless/model/items.h"
#include "headless/model/layers.h"
#include "text/encoding.h"
#include "text/units.h"

namespace headless {

using creo::Got;
using creo::ProElement;
using creo::ProItemType;

namespace {

// Kinds of default layers, and the features that are of the kind.
struct DefaultLayerKind {
  int kind, feature;
};
constexpr DefaultLayerKind kDefaultLayerKinds[] = {{creo::kPlaneLayer, creo::kDatumPlaneFeature},
                                                   {creo::kPointLayer, creo::kDatumPointFeature},
                                                   {creo::kPointFeatureLayer, creo::kDatumPointFeature},
                                                   {creo::kPatternLayer, creo::kPatternFeature},
                                                   {creo::kCsysLayer, creo::kCsysFeature}};

// ---- reading a tree

const ProElement* childOf(const ProElement& tree, int id) {
  const auto found = std::find_if(tree.children.begin(), tree.children.end(),
                                  [id](const ProElement& child) { return child.id == id; });
  return found == tree.children.end() ? nullptr : &*found;
}

// Null: the tree has no such element, or one of another kind.
template <class Value>
const Value* valueOf(const ProElement& tree, int id) {
  const ProElement* child = childOf(tree, id);
  return child ? std::get_if<Value>(&child->value) : nullptr;
}

// ---- what each new feature has

// An id whose symbol is no other dimension's name either.
int freeDimensionId(const ModelRecord& record) {
  int last = 0;
  std::unordered_set<std::string> symbols;
  for (const DimensionRecord& dimension : record.dimensions) {
    if (!dimension.reference) last = std::max(last, dimension.id);
    symbols.insert(folded(symbolOf(dimension)));
  }
  do ++last;
  while (symbols.contains(folded("d" + std::to_string(last))));
  return last;
}

// The symbol that the dimension got.
std::string addDimension(ModelRecord& record, FeatureRecord& feature, double value) {
  const DimensionRecord& added = addDimension(record, value);
  feature.dimensions.push_back(added.id);
  return symbolOf(added);
}

int finish(const Model& solid, FeatureRecord feature, const SolidRecord& datums) {
  ModelDocument& document = *solid.document;
  const int id = feature.id;
  insertFeature(document, std::move(feature));
  document.record.solid = rawSolid(datums);
  document.solidChanged();
  document.touch(nullptr);
  return id;
}

DatumRecord datumAt(int feature, const std::string& csys, Measures position) {
  DatumRecord datum;
  datum.feature = feature;
  datum.csys = csys;
  datum.placement = std::make_unique<PlacementRecord>();
  datum.placement->position = std::move(position);
  return datum;
}

// The name of the coordinate system that a tree refers to; empty: there is none, or it has no name to be known by.
std::string referredCsys(const Model& solid, const ProElement& tree) {
  const auto* reference = valueOf<creo::ProReference>(tree, creo::kFeatureReferenceElement);
  if (!reference || reference->item.type != ProItemType::coordinateSystem || reference->item.owner != solid.handle)
    return {};
  const auto name = itemName(solid, reference->item);
  return name ? text::toUtf8(name.value) : std::string();
}

// The feature that stands behind the coordinate system of a tree; nothing: none does.
std::vector<int> parentsOf(const Model& solid, const ProElement& tree) {
  const auto& reference = *valueOf<creo::ProReference>(tree, creo::kFeatureReferenceElement);
  const int feature =
      solid.document->solid().coordinateSystems[static_cast<std::size_t>(reference.item.id) - 1].feature;
  return feature == 0 ? std::vector<int>() : std::vector<int>{feature};
}

}  // namespace

DimensionRecord& addDimension(ModelRecord& record, double value) {
  const int id = freeDimensionId(record);
  DimensionRecord& added = record.dimensions.emplace_back();
  added.id = id;
  added.value = value;
  return added;
}

Got<int> createDatum(const Model& solid, const ProElement& tree) {
  const int* type = valueOf<int>(tree, creo::kFeatureTypeElement);
  const auto* name = valueOf<std::wstring>(tree, creo::kFeatureNameElement);
  const std::string csys = referredCsys(solid, tree);
  const bool isPoint = type && *type == creo::kDatumPointFeature;
  if (!type || !name || csys.empty() || (!isPoint && *type != creo::kDatumPlaneFeature)) return creo::ProBadInputs;
  if (!text::fits(*name, text::kNameSize)) return creo::ProBadInputs;
  if (itemNamed(solid, ProItemType::feature, *name)) return creo::ProExists;
  std::vector<double> offsets;
  for (const int id : isPoint ? std::vector<int>{creo::kOffsetXElement, creo::kOffsetYElement, creo::kOffsetZElement}
                              : std::vector<int>{creo::kOffsetDistanceElement}) {
    const double* offset = valueOf<double>(tree, id);
    if (!offset) return creo::ProBadInputs;
    offsets.push_back(*offset);
  }
  FeatureRecord feature;
  feature.id = freeFeatureId(*solid.document);
  feature.type = *type;
  feature.name = text::toUtf8(*name);
  feature.typeName = isPoint ? "DATUM POINT" : "DATUM PLANE";
  feature.parents = parentsOf(solid, tree);
  Measures position;
  if (!isPoint) position = {0.0, 0.0};
  for (const double offset : offsets) position.emplace_back(addDimension(solid.document->record, feature, offset));
  SolidRecord datums = solidRecord(solid.document->record.solid);
  (isPoint ? datums.points : datums.planes).push_back(datumAt(feature.id, csys, std::move(position)));
  return finish(solid, std::move(feature), datums);
}

namespace {

// Reads the table; false for one that a pattern of the leader can't have.
bool readTable(const Model& solid, const FeatureRecord& leader, const ProElement& tree, PatternRecord& into) {
  std::unordered_set<int> numbers;
  for (const ProElement& child : tree.children) {
    if (child.id == creo::kTableDimensionElement) {
      const auto* reference = std::get_if<creo::ProReference>(&child.value);
      if (!reference || reference->item.type != ProItemType::dimension || reference->item.owner != solid.handle)
        return false;
      const int id = reference->item.id;
      if (std::count(leader.dimensions.begin(), leader.dimensions.end(), id) == 0) return false;
      if (std::count(into.dimensions.begin(), into.dimensions.end(), id) > 0) return false;
      into.dimensions.push_back(id);
    }
    if (child.id != creo::kTableRowElement) continue;
    PatternMemberRecord& member = into.members.emplace_back();
    const int* number = valueOf<int>(child, creo::kMemberNumberElement);
    if (!number || !numbers.insert(*number).second) return false;
    member.number = *number;
    for (const ProElement& value : child.children)
      if (const auto* real = std::get_if<double>(&value.value); real && value.id == creo::kMemberValueElement)
        member.values.push_back(*real);
    if (member.values.size() != into.dimensions.size()) return false;
  }
  return !into.dimensions.empty();
}

}  // namespace

Got<int> createPattern(const Model& solid, int leader, const ProElement& tree) {
  ModelRecord& record = solid.document->record;
  const auto found = featureOf(solid, leader);
  const FeatureRecord* first = found ? found->record() : nullptr;
  if (!first || first->type != creo::kDatumPointFeature) return creo::ProBadInputs;
  auto pattern = std::make_unique<PatternRecord>();
  if (!readTable(solid, *first, tree, *pattern)) return creo::ProBadInputs;
  pattern->regeneration = creo::kGeneralPattern;

  SolidRecord datums = solidRecord(record.solid);
  const auto point = std::find_if(datums.points.begin(), datums.points.end(),
                                  [&](const DatumRecord& entry) { return entry.feature == leader && entry.placement; });
  if (point == datums.points.end()) return creo::ProBadInputs;
  const std::string csys = point->csys;
  const Measures position = point->placement->position;
  FeatureRecord feature;
  feature.id = freeFeatureId(*solid.document);
  feature.type = creo::kPatternFeature;
  feature.typeName = "PATTERN";
  feature.parents = {leader};
  // A dimension's value takes its place in the position; the others stay as they are.
  std::vector<std::size_t> axes;
  for (const int id : pattern->dimensions) {
    const DimensionRecord* dimension = solid.document->dimension(id, false);
    const auto axis = std::find(position.begin(), position.end(), Measure(dimension ? symbolOf(*dimension) : ""));
    if (axis == position.end()) return creo::ProBadInputs;
    axes.push_back(static_cast<std::size_t>(axis - position.begin()));
  }
  for (const PatternMemberRecord& member : pattern->members) {
    Measures place = position;
    for (std::size_t i = 0; i < axes.size(); ++i) place[axes[i]] = member.values[i];
    datums.points.push_back(datumAt(feature.id, csys, std::move(place)));
  }
  feature.pattern = std::move(pattern);
  return finish(solid, std::move(feature), datums);
}

bool isDefaultLayerKind(int kind) {
  return std::any_of(std::begin(kDefaultLayerKinds), std::end(kDefaultLayerKinds),
                     [kind](const DefaultLayerKind& entry) { return entry.kind == kind; });
}

void putOnDefaultLayers(const Model& solid, int feature, const DefaultLayers& layers) {
  const auto made = featureOf(solid, feature);
  if (!made) return;
  const int type = featureType(*made);
  for (const auto& [kind, ofType] : kDefaultLayerKinds) {
    const auto name = ofType == type ? layers.find(kind) : layers.end();
    if (name == layers.end()) continue;
    if (LayerRecord* layer = layerNamed(*solid.document, text::toUtf8(name->second)))
      addLayerItem(*solid.document, *layer, {ProItemType::feature, feature, solid.handle, {}});
  }
}

}  // namespace headless
