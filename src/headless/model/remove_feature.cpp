#include "headless/model/remove_feature.h"

#include <algorithm>

#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/store/json.h"

namespace headless {

using creo::ProFamitemType;
using creo::ProItemType;

namespace {

using Ids = std::unordered_set<int>;

// Members of the body's description that name their feature.
void removeFromSolid(ModelDocument& document, const Ids& ids) {
  RawJson& solid = document.record.solid;
  Json tree;
  if (solid.text.empty() || parseJson(solid.text, tree)) return;
  bool removed = false;
  for (Json& list : tree.items)
    if (list.is(JsonKind::array))
      removed = std::erase_if(list.items,
                              [&](const Json& item) {
                                const Json* feature = item.member("feature");
                                return feature && feature->is(JsonKind::integer) &&
                                       ids.contains(static_cast<int>(feature->integer));
                              }) > 0 ||
                removed;
  if (!removed) return;
  solid.text = prettyJson(tree, 1);
  document.solidChanged();
}

void removeColumns(ModelDocument& document, const Model& solid, const Ids& ids, const Ids& dimensions) {
  if (!document.record.familyTable) return;
  for (const ModelFeature& feature : featuresOf(solid))
    if (ids.contains(feature.place.id)) removeColumn(document, ProFamitemType::feature, featureColumn(feature));
  for (const DimensionRecord& entry : document.record.dimensions)
    if (!entry.reference && dimensions.contains(entry.id))
      removeColumn(document, ProFamitemType::dimension, symbolOf(entry));
}

}  // namespace

void dropReferences(ModelRecord& record, const Ids& features, const Ids& dimensions) {
  for (LayerRecord& layer : record.layers)
    std::erase_if(layer.items, [&](const ItemRecord& item) {
      return (item.type == ProItemType::feature && features.contains(item.id)) ||
             (item.type == ProItemType::dimension && dimensions.contains(item.id));
    });
  for (SimplifiedRepRecord& rep : record.simplifiedReps)
    std::erase_if(rep.items, [&](const SimplifiedRepItemRecord& item) { return features.contains(item.feature); });
  for (auto* states : {&record.explodedStates, &record.styleStates})
    for (StateRecord& state : *states)
      std::erase_if(state.items, [&](const StateItemRecord& item) { return features.contains(item.feature); });
}

void removeFeatures(const Model& solid, const std::unordered_set<int>& ids) {
  ModelDocument& document = *solid.document;
  ModelRecord& record = document.record;
  Ids dimensions;
  std::unordered_set<std::size_t> components;
  int insertId = 0, insertNumber = 0;  // the last feature before the place of insert mode that stays
  for (const ModelFeature& feature : featuresOf(solid)) {
    // An id that a component got by its place is written down, as the places change.
    if (feature.isComponent()) record.components[feature.place.component].feature = feature.place.id;
    if (!ids.contains(feature.place.id)) {
      const int number = feature.place.number;
      if (number > record.insertAfter || number <= insertNumber) continue;
      insertId = feature.place.id;
      insertNumber = number;
      continue;
    }
    if (feature.isComponent()) components.insert(feature.place.component);
    if (const FeatureRecord* present = feature.record())
      dimensions.insert(present->dimensions.begin(), present->dimensions.end());
  }
  removeColumns(document, solid, ids, dimensions);
  std::erase_if(record.features, [&](const FeatureRecord& entry) { return ids.contains(entry.id); });
  std::size_t place = 0;
  std::erase_if(record.components, [&](const UsedModelRecord&) { return components.contains(place++); });
  std::erase_if(record.dimensions, [&](const DimensionRecord& dimension) {
    return !dimension.reference && dimensions.contains(dimension.id);
  });
  dropReferences(record, ids, dimensions);
  removeFromSolid(document, ids);
  document.tree.changed();
  if (record.insertAfter > 0) {
    const TreeFeature* kept = document.tree.find(record, insertId);
    record.insertAfter = kept ? kept->number : 0;
  }
  document.relationsChanged();
  document.touch(nullptr);
}

}  // namespace headless
