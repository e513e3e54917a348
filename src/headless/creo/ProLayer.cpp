#include "creo/ProLayer.h"

#include <algorithm>

#include "headless/creo/operation.h"
#include "headless/model/bottom_up.h"
#include "headless/model/items.h"
#include "headless/model/layer_rules.h"
#include "headless/model/layers.h"
#include "headless/model/new_features.h"
#include "headless/model/retrieve.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/format.h"

namespace creo {

using headless::LayerRecord;
using headless::LayerWalk;
using headless::Model;
using headless::ModelDocument;
using headless::onModel;
using State = headless::Session::State;

namespace {

// As onModel, for an operation on a layer; ProNotFound where the layer has gone. body: (state, model, layer).
template <class Body>
auto onLayer(std::string_view name, const ProLayer& layer, Body&& body)
    -> std::invoke_result_t<Body, State&, Model&, LayerRecord&> {
  using Result = std::invoke_result_t<Body, State&, Model&, LayerRecord&>;
  return onModel(name, layer.owner, [&](State& state, Model& model) -> Result {
    LayerRecord* record = headless::layerOf(*model.document, layer.id);
    if (!record) return Result(ProNotFound);
    return body(state, model, *record);
  });
}

ProLayerDisplay shown(const LayerRecord& layer) { return layer.unsaved.value_or(layer.status); }

// Behind what was put on the layer stands what its associative rules find at the moment.
Got<std::vector<ProModelitem>> itemsOf(std::string_view operation, const ProLayer& layer) {
  using Items = std::vector<ProModelitem>;
  return onLayer(operation, layer, [](State&, Model& m, LayerRecord& record) -> Got<Items> {
    const LayerWalk* walk = LayerWalk::of(*m.document);
    Items items;
    for (const headless::ItemRecord& item : record.items) {
      if (walk && item.type == ProItemType::layer && walk->removed(item.id)) continue;
      items.push_back({item.type, item.id, m.handle, {}});
    }
    if (!record.associativeRules) return items;
    for (ProModelitem& found : headless::foundByRules(m, record)) items.push_back(std::move(found));
    return items;
  });
}

// The model that gives new layers their rules. Null: there is none; a line says why where one is named.
Model* layerTemplate(State& state) {
  const auto values = state.configuration.values(L"default_layer_model");
  if (values.empty() || values.front().empty()) return nullptr;
  const auto file = headless::documentFile(os::nameOf(values.front()));
  const std::wstring folder = os::folderOf(values.front());
  Got<ProMdl> model = ProBadInputs;
  if (file) model = state.models.inMemory(file->name, file->type);
  if (file && !model) {
    const std::wstring before = state.models.folders().working();
    if (folder.empty() || state.models.folders().change(folder)) {
      model = headless::retrieveModel(state.models, file->name, file->type);
      state.models.folders().change(before);
    }
  }
  if (!model) {
    state.showMessage(text::format(L"default_layer_model: there is no model %s", values.front()));
    return nullptr;
  }
  return state.models.find(model.value);
}

void takeRules(LayerRecord& layer, const LayerRecord& from) {
  layer.ruleBased = from.ruleBased;
  layer.associativeRules = from.associativeRules;
  layer.independentRules = from.independentRules;
  layer.rules = from.rules;
}

// What the document's layers show is saved with it from now on. True: it was something else.
bool saveShown(ModelDocument& document) {
  bool changed = false;
  for (LayerRecord& layer : document.record.layers) {
    changed = changed || shown(layer) != layer.status;
    layer.status = shown(layer);
    layer.unsaved.reset();
  }
  if (changed) document.touch(nullptr);
  return changed;
}

bool isThere(const Model& model, ProItemType type, int id) {
  if (type == ProItemType::layer) return headless::layerOf(*model.document, id) != nullptr;
  const auto items = headless::namedItems(model, type);
  return std::any_of(items.begin(), items.end(), [id](const auto& item) { return item.id == id; });
}

int nextId(const std::vector<LayerRecord>& layers) {
  int last = 0;
  for (const LayerRecord& layer : layers) last = std::max(last, layer.id);
  return last + 1;
}

}  // namespace

ProError ProMdlLayerVisit(ProMdl model, Visitor<ProLayer> visitor) {
  return onModel("ProMdlLayerVisit", model, [&](State&, Model& m) -> ProError {
    const ProMdl handle = m.handle;
    const LayerWalk walk(m.document);
    const LayerWalk* outermost = LayerWalk::of(*m.document);
    std::vector<ProLayer> layers;
    for (const int id : outermost->ids()) layers.push_back({handle, id});
    return headless::visit<ProLayer>(layers, visitor);
  });
}

Got<std::wstring> ProLayerNameGet(const ProLayer& layer) {
  return onLayer("ProLayerNameGet", layer,
                 [](State&, Model&, LayerRecord& record) -> Got<std::wstring> { return text::fromUtf8(record.name); });
}

Got<ProLayer> ProLayerCreate(ProMdl model, const std::wstring& name) {
  return onModel("ProLayerCreate", model, [&](State& state, Model& m) -> Got<ProLayer> {
    if (!headless::isLayerName(name)) return ProBadInputs;
    const std::string utf8 = text::toUtf8(name);
    if (headless::layerNamed(*m.document, utf8)) return ProExists;
    LayerRecord layer;
    layer.id = nextId(m.document->record.layers);
    layer.name = utf8;
    const Model* rules = layerTemplate(state);
    if (rules && rules->document != m.document)
      if (const LayerRecord* from = headless::layerNamed(*rules->document, utf8)) takeRules(layer, *from);
    const int id = layer.id;
    m.document->record.layers.push_back(std::move(layer));
    headless::settleRules(m, m.document->record.layers.back());
    m.document->touch(nullptr);
    return ProLayer{m.handle, id};
  });
}

ProError ProLayerDelete(const ProLayer& layer) {
  return onLayer("ProLayerDelete", layer, [](State&, Model& m, LayerRecord& record) -> ProError {
    headless::removeLayer(*m.document, record);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<ProLayerDisplay> ProLayerDisplaystatusGet(const ProLayer& layer) {
  return onLayer("ProLayerDisplaystatusGet", layer,
                 [](State&, Model&, LayerRecord& record) -> Got<ProLayerDisplay> { return shown(record); });
}

ProError ProLayerDisplaystatusSet(const ProLayer& layer, ProLayerDisplay status) {
  return onLayer("ProLayerDisplaystatusSet", layer, [&](State&, Model&, LayerRecord& record) -> ProError {
    record.unsaved = status;
    return ProNoError;
  });
}

ProError ProLayerDisplaystatusSave(ProMdl model) {
  return onModel("ProLayerDisplaystatusSave", model, [](State& state, Model& m) -> ProError {
    const auto usedBy = [&state](ProMdl current) {
      std::vector<ProMdl> used;
      for (const Model* below : state.models.usedBy(*state.models.look(current))) used.push_back(below->handle);
      return used;
    };
    bool changed = false;
    for (const ProMdl visited : headless::bottomUp(m.handle, usedBy))
      if (Model* one = state.models.look(visited); !one->document->isAway())  // such a one shows what is saved
        changed = saveShown(*one->document) || changed;
    return changed ? ProNoError : ProNoChange;
  });
}

Got<std::vector<ProModelitem>> ProLayerItemsPopulate(const ProLayer& layer) {
  return itemsOf("ProLayerItemsPopulate", layer);
}

Got<std::vector<ProModelitem>> ProLayerItemsGet(const ProLayer& layer) { return itemsOf("ProLayerItemsGet", layer); }

Got<ProModelitem> ProLayerItemInit(ProItemType type, int id, ProMdl owner) {
  return onModel("ProLayerItemInit", owner, [&](State&, Model& m) -> Got<ProModelitem> {
    if (type == ProItemType::none) return ProBadInputs;
    if (!isThere(m, type, id)) return ProNotFound;
    return ProModelitem{type, id, m.handle, {}};
  });
}

ProError ProLayerItemAdd(const ProLayer& layer, const ProModelitem& item) {
  return onLayer("ProLayerItemAdd", layer, [&](State&, Model& m, LayerRecord& record) -> ProError {
    if (item.owner != m.handle) return ProBadInputs;
    return headless::addLayerItem(*m.document, record, item);
  });
}

Got<std::wstring> ProLayerDefLayerGet(ProMdl model, int kind) {
  return onModel("ProLayerDefLayerGet", model, [&](State& state, Model&) -> Got<std::wstring> {
    const auto found = state.defaultLayers.find(kind);
    return found == state.defaultLayers.end() ? std::wstring() : found->second;
  });
}

ProError ProLayerDefLayerSet(ProMdl model, int kind, const std::wstring& layer) {
  return onModel("ProLayerDefLayerSet", model, [&](State& state, Model&) -> ProError {
    if (!headless::isDefaultLayerKind(kind) || (!layer.empty() && !headless::isLayerName(layer))) return ProBadInputs;
    if (layer.empty())
      state.defaultLayers.erase(kind);
    else
      state.defaultLayers[kind] = layer;
    return ProNoError;
  });
}

}  // namespace creo
