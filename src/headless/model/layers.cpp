#include "headless/model/layers.h"

#include <algorithm>

#include "headless/store/names.h"
#include "text/units.h"

namespace headless {

using creo::ProError;
using creo::ProItemType;
using creo::ProModelitem;

namespace {

long long itemKey(ProItemType type, int id) { return static_cast<long long>(type) << 32 | static_cast<unsigned>(id); }

using Ids = std::unordered_set<int>;
using Names = std::unordered_set<std::string>;

// References to layers that have gone.
void dropReferences(ModelRecord& record, const Ids& ids, Names names) {
  for (const LayerRecord& layer : record.layers) names.erase(folded(layer.name));  // another one is called so
  for (LayerRecord& layer : record.layers)
    std::erase_if(layer.items,
                  [&](const ItemRecord& item) { return item.type == ProItemType::layer && ids.contains(item.id); });
  for (LayerStateRecord& state : record.layerStates)
    std::erase_if(state.layers, [&](const LayerStatusRecord& entry) { return names.contains(folded(entry.name)); });
}

}  // namespace

LayerWalk::~LayerWalk() {
  if (removed_.empty()) return;
  ModelRecord& record = document().record;
  std::sort(removed_.begin(), removed_.end());
  Names names;
  std::size_t kept = 0, next = 0;
  for (std::size_t i = 0; i < record.layers.size(); ++i) {
    if (next < removed_.size() && removed_[next] == i) {
      names.insert(folded(record.layers[i].name));
      ++next;
    } else if (kept++ != i) {
      record.layers[kept - 1] = std::move(record.layers[i]);
    }
  }
  record.layers.resize(kept);
  dropReferences(record, removedIds_, std::move(names));
}

LayerRecord* LayerWalk::find(int id) {
  auto& layers = document().record.layers;
  for (; indexed_ < layers.size(); ++indexed_) places_.try_emplace(layers[indexed_].id, indexed_);
  const auto found = places_.find(id);
  return found == places_.end() || removed(id) ? nullptr : &layers[found->second];
}

void LayerWalk::remove(LayerRecord& layer) {
  removed_.push_back(places_.at(layer.id));
  removedIds_.insert(layer.id);
}

std::vector<int> LayerWalk::ids() const {
  std::vector<int> ids;
  for (const LayerRecord& layer : document().record.layers)
    if (!removed(layer.id)) ids.push_back(layer.id);
  return ids;
}

bool LayerWalk::noteItem(const LayerRecord& layer, const ProModelitem& item) {
  const auto [at, fresh] = items_.try_emplace(layer.id);
  if (fresh)
    for (const ItemRecord& record : layer.items) at->second.insert(itemKey(record.type, record.id));
  return at->second.insert(itemKey(item.type, item.id)).second;
}

bool LayerWalk::noteInState(const LayerStateRecord& state, const std::string& layer) {
  const auto [at, fresh] = layersOfStates_.try_emplace(folded(state.name));
  if (fresh)
    for (const LayerStatusRecord& record : state.layers) at->second.insert(folded(record.name));
  return at->second.insert(folded(layer)).second;
}

LayerRecord* layerOf(ModelDocument& document, int id) {
  if (LayerWalk* walk = LayerWalk::of(document)) return walk->find(id);
  auto& layers = document.record.layers;
  const auto found =
      std::find_if(layers.begin(), layers.end(), [id](const LayerRecord& layer) { return layer.id == id; });
  return found == layers.end() ? nullptr : &*found;
}

LayerRecord* layerNamed(ModelDocument& document, std::string_view name) {
  const LayerWalk* walk = LayerWalk::of(document);
  for (LayerRecord& layer : document.record.layers)
    if (sameName(layer.name, name) && !(walk && walk->removed(layer.id))) return &layer;
  return nullptr;
}

void removeLayer(ModelDocument& document, LayerRecord& layer) {
  const int id = layer.id;
  std::unique_ptr<LayerWalk> own;
  LayerWalk* walk = LayerWalk::of(document);
  if (!walk) {
    // A walk of its own, for its end; the document outlives it.
    own = std::make_unique<LayerWalk>(std::shared_ptr<ModelDocument>(std::shared_ptr<void>(), &document));
    walk = own.get();
  }
  if (LayerRecord* found = walk->find(id)) walk->remove(*found);
}

namespace {

// Does a layer lie on the other one, be it by layers between them? Each is looked at once, so that a document whose
// layers lie on each other has an end.
bool liesOn(ModelDocument& document, int wanted, int layer) {
  Ids seen = {layer};
  std::vector<int> waiting = {layer};
  while (!waiting.empty()) {
    const int id = waiting.back();
    waiting.pop_back();
    if (id == wanted) return true;
    const LayerRecord* record = layerOf(document, id);
    if (!record) continue;
    for (const ItemRecord& item : record->items)
      if (item.type == ProItemType::layer && seen.insert(item.id).second) waiting.push_back(item.id);
  }
  return false;
}

}  // namespace

namespace {

bool isTakenByLayers(ProItemType type) {
  switch (type) {
    case ProItemType::coordinateSystem:
    case ProItemType::simplifiedRep:
    case ProItemType::explodedState:
      return false;
    default:
      return true;
  }
}

}  // namespace

ProError addLayerItem(ModelDocument& document, LayerRecord& layer, const ProModelitem& item) {
  if (item.type == ProItemType::none) return creo::ProBadInputs;
  if (!isTakenByLayers(item.type)) return creo::ProInvalidType;
  if (item.type == ProItemType::layer && !layerOf(document, item.id)) return creo::ProNotFound;
  if (item.type == ProItemType::layer && liesOn(document, layer.id, item.id)) return creo::ProBadInputs;
  LayerWalk* walk = LayerWalk::of(document);
  const bool fresh = walk ? walk->noteItem(layer, item)
                          : std::none_of(layer.items.begin(), layer.items.end(), [&](const ItemRecord& record) {
                              return record.type == item.type && record.id == item.id;
                            });
  if (!fresh) return creo::ProNoError;
  ItemRecord& added = layer.items.emplace_back();
  added.type = item.type;
  added.id = item.id;
  document.touch(nullptr);
  return creo::ProNoError;
}

void layerRenamed(ModelRecord& record, const std::string& from, const std::string& to) {
  for (LayerStateRecord& state : record.layerStates)
    for (LayerStatusRecord& layer : state.layers)
      if (sameName(layer.name, from)) layer.name = to;
}

bool isLayerName(std::wstring_view name) {
  return !name.empty() && text::fits(name, text::kNameSize) &&
         std::none_of(name.begin(), name.end(), [](wchar_t c) { return c < L' ' || c == L'`' || c == L';'; });
}

}  // namespace headless
