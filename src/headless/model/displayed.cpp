#include "headless/model/displayed.h"

#include <unordered_map>
#include <unordered_set>

#include "headless/model/layer_rules.h"
#include "headless/model/layers.h"
#include "headless/model/records.h"

namespace headless {

namespace {

using Ids = std::unordered_set<int>;

// The features on a layer, and on the layers that lie on it.
class LayerContents {
 public:
  explicit LayerContents(const Model& solid) : solid_(solid) {}
  Ids hidden() {
    for (const LayerRecord& layer : solid_.document->record.layers) {
      const auto status = layer.unsaved.value_or(layer.status);
      if (status == creo::ProLayerDisplay::blank || status == creo::ProLayerDisplay::hidden) add(layer);
    }
    return std::move(features_);
  }

 private:
  void add(const LayerRecord& layer) {
    if (!seen_.insert(layer.id).second) return;
    for (const ItemRecord& item : layer.items) take(item.type, item.id);
    for (const creo::ProModelitem& item : foundByRules(solid_, layer)) take(item.type, item.id);
  }
  void take(creo::ProItemType type, int id) {
    if (type == creo::ProItemType::feature) features_.insert(id);
    if (type != creo::ProItemType::layer) return;
    if (const LayerRecord* inner = layerOf(*solid_.document, id)) add(*inner);
  }

  const Model& solid_;
  Ids features_, seen_;
};

// By feature; of several for one the first.
using Items = std::unordered_map<int, const StateItemRecord*>;
Items itemsOf(const StateRecord* state) {
  Items items;
  if (!state) return items;
  for (const StateItemRecord& item : state->items) items.emplace(item.feature, &item);
  return items;
}
const StateItemRecord* itemOf(const Items& items, int feature) {
  const auto found = items.find(feature);
  return found == items.end() ? nullptr : found->second;
}

}  // namespace

std::vector<DisplayedModel> displayedComponents(const Models& models, const Model& assembly) {
  ModelRecord& record = assembly.document->record;
  const Ids hidden = LayerContents(assembly).hidden();
  const Items exploded = itemsOf(recordNamed(record.explodedStates, record.activeExplodedState));
  const Items style = itemsOf(recordNamed(record.styleStates, record.activeStyleState));
  std::vector<DisplayedModel> shown;
  for (const PlacedModel& placed : placedComponents(models, assembly)) {
    const StateItemRecord* look = itemOf(style, placed.feature);
    if (hidden.contains(placed.feature) || (look && look->blanked)) continue;
    DisplayedModel& entry = shown.emplace_back(DisplayedModel{placed.model, placed.place, look && look->transparent});
    const StateItemRecord* step = itemOf(exploded, placed.feature);
    if (!step || step->move.size() != 3) continue;
    entry.place.origin.x += step->move[0];
    entry.place.origin.y += step->move[1];
    entry.place.origin.z += step->move[2];
  }
  return shown;
}

}  // namespace headless
