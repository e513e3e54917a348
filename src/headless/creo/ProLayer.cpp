#include "creo/ProLayer.h"

#include <algorithm>

#include "headless/creo/operation.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace creo {

using headless::LayerRecord;
using headless::Model;
using headless::onModel;
using State = headless::Session::State;

namespace {

const LayerRecord* layerOf(const Model& model, int id) {
  const auto& layers = model.document->record.layers;
  const auto found = std::find_if(layers.begin(), layers.end(), [id](const LayerRecord& one) { return one.id == id; });
  return found == layers.end() ? nullptr : &*found;
}

Got<std::vector<ProModelitem>> itemsOf(std::string_view operation, const ProLayer& layer) {
  using Items = std::vector<ProModelitem>;
  return onModel(operation, layer.owner, [&](State&, Model& m) -> Got<Items> {
    const LayerRecord* found = layerOf(m, layer.id);
    if (!found) return ProNotFound;
    Items items;
    for (const headless::ItemRecord& one : found->items) items.push_back({one.type, one.id, m.handle, {}});
    return items;
  });
}

}  // namespace

ProError ProMdlLayerVisit(ProMdl model, Visitor<ProLayer> visitor) {
  return onModel("ProMdlLayerVisit", model, [&](State&, Model& m) -> ProError {
    std::vector<ProLayer> layers;
    for (const LayerRecord& one : m.document->record.layers) layers.push_back({m.handle, one.id});
    return headless::visit<ProLayer>(layers, visitor);
  });
}

Got<std::wstring> ProLayerNameGet(const ProLayer& layer) {
  return onModel("ProLayerNameGet", layer.owner, [&](State&, Model& m) -> Got<std::wstring> {
    const LayerRecord* found = layerOf(m, layer.id);
    if (!found) return ProNotFound;
    return text::fromUtf8(found->name);
  });
}

Got<ProLayerDisplay> ProLayerDisplaystatusGet(const ProLayer& layer) {
  return onModel("ProLayerDisplaystatusGet", layer.owner, [&](State&, Model& m) -> Got<ProLayerDisplay> {
    const LayerRecord* found = layerOf(m, layer.id);
    if (!found) return ProNotFound;
    return found->status;
  });
}

// Layers have no rules here: what is on one was put there.
Got<std::vector<ProModelitem>> ProLayerItemsPopulate(const ProLayer& layer) {
  return itemsOf("ProLayerItemsPopulate", layer);
}

Got<std::vector<ProModelitem>> ProLayerItemsGet(const ProLayer& layer) { return itemsOf("ProLayerItemsGet", layer); }

Got<std::vector<ProLayerstate>> ProLayerstatesGet(ProMdl model) {
  using States = std::vector<ProLayerstate>;
  return onModel("ProLayerstatesGet", model, [](State&, Model& m) -> Got<States> {
    States states;
    for (const headless::LayerStateRecord& one : m.document->record.layerStates)
      states.push_back({m.handle, text::fromUtf8(one.name)});
    if (states.empty()) return ProNotFound;
    return states;
  });
}

Got<std::wstring> ProLayerstateNameGet(const ProLayerstate& state) {
  return onModel("ProLayerstateNameGet", state.owner, [&](State&, Model& m) -> Got<std::wstring> {
    for (const headless::LayerStateRecord& one : m.document->record.layerStates) {
      std::wstring name = text::fromUtf8(one.name);
      if (text::equalNoCase(name, state.name)) return name;
    }
    return ProNotFound;
  });
}

}  // namespace creo
