// The layers of a document by id, and what happens to them while they are walked.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "headless/model/walks.h"

namespace headless {

// A walk over a document's layers. While one goes on, layers are found by id at once, and a deleted one stays in its
// place until the outermost walk of the document ends: deleting all of 5,000 layers moves none of them 5,000 times.
// Walks inside a walk share what it knows.
class LayerWalk : public WalkOver<LayerWalk> {
 public:
  explicit LayerWalk(std::shared_ptr<ModelDocument> document) : WalkOver(std::move(document)) {}
  ~LayerWalk();
  LayerWalk(const LayerWalk&) = delete;
  LayerWalk& operator=(const LayerWalk&) = delete;

  // Null: none of that id, or a deleted one.
  LayerRecord* find(int id);
  void remove(LayerRecord& layer);
  [[nodiscard]] bool removed(int id) const { return removedIds_.contains(id); }
  // Ids of the layers, without the deleted ones.
  [[nodiscard]] std::vector<int> ids() const;
  // True: it wasn't on the layer yet.
  bool noteItem(const LayerRecord& layer, const creo::ProModelitem& item);
  // True: the state hadn't the layer yet.
  bool noteInState(const LayerStateRecord& state, const std::string& layer);

 private:
  std::unordered_map<int, std::size_t> places_;
  std::size_t indexed_ = 0;
  std::vector<std::size_t> removed_;  // places
  std::unordered_set<int> removedIds_;
  std::unordered_map<int, std::unordered_set<long long>> items_;                     // by layer
  std::unordered_map<std::string, std::unordered_set<std::string>> layersOfStates_;  // folded names
};

// Null: the layer has gone.
LayerRecord* layerOf(ModelDocument& document, int id);
// Null: no layer of that name, case-blind.
LayerRecord* layerNamed(ModelDocument& document, std::string_view name);
// The layer goes, from the layers that it lies on and from layer states.
void removeLayer(ModelDocument& document, LayerRecord& layer);
// As ProLayerItemAdd, for a thing of the same model.
creo::ProError addLayerItem(ModelDocument& document, LayerRecord& layer, const creo::ProModelitem& item);
// The layer's states know it by its new name.
void layerRenamed(ModelRecord& record, const std::string& from, const std::string& to);
// May a layer be called so? Up to 31 characters, none of them one that ends a name in a macro.
bool isLayerName(std::wstring_view name);

}  // namespace headless
