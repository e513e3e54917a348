// Layer states.
#include <algorithm>
#include <unordered_map>

#include "creo/ProLayer.h"
#include "headless/creo/operation.h"
#include "headless/model/layers.h"
#include "headless/store/names.h"
#include "text/encoding.h"

namespace creo {

using headless::LayerRecord;
using headless::LayerStateRecord;
using headless::LayerWalk;
using headless::Model;
using headless::ModelRecord;
using headless::onModel;
using State = headless::Session::State;

namespace {

// Whoever works on many states asks for them in their order, so a search begins where the last one ended: all together
// look at the list once. After a name that isn't there it has been looked at whole.
LayerStateRecord* stateNamed(ModelRecord& record, const std::wstring& name) {
  static std::size_t last = 0;  // of whatever record
  auto& states = record.layerStates;
  const std::string utf8 = text::toUtf8(name);
  for (std::size_t i = 0; i < states.size(); ++i) {
    const std::size_t place = (last + i) % states.size();
    if (!headless::sameName(states[place].name, utf8)) continue;
    last = place;
    return &states[place];
  }
  return nullptr;
}

// As onModel, for an operation on a layer state; ProNotFound where it has gone. body: (model, state).
template <class Body>
auto onState(std::string_view name, const ProLayerstate& layerState, Body&& body)
    -> std::invoke_result_t<Body, Model&, LayerStateRecord&> {
  using Result = std::invoke_result_t<Body, Model&, LayerStateRecord&>;
  return onModel(name, layerState.owner, [&](State&, Model& model) -> Result {
    LayerStateRecord* record = stateNamed(model.document->record, layerState.name);
    if (!record) return Result(ProNotFound);
    return body(model, *record);
  });
}

// Empties a reference to something of that name. True: there was one.
bool emptied(std::string& reference, const std::string& name) {
  if (!headless::sameName(reference, name)) return false;
  reference.clear();
  return true;
}

// The layer shows that status, saved and in this session. True: its saved status was another one.
bool showSaved(LayerRecord& layer, ProLayerDisplay status) {
  const bool changes = layer.status != status;
  layer.status = status;
  layer.unsaved.reset();
  return changes;
}

}  // namespace

Got<std::vector<ProLayerstate>> ProLayerstatesGet(ProMdl model) {
  using States = std::vector<ProLayerstate>;
  return onModel("ProLayerstatesGet", model, [](State&, Model& m) -> Got<States> {
    States states;
    for (const LayerStateRecord& one : m.document->record.layerStates)
      states.push_back({m.handle, text::fromUtf8(one.name)});
    if (states.empty()) return ProNotFound;
    return states;
  });
}

Got<std::wstring> ProLayerstateNameGet(const ProLayerstate& state) {
  return onState("ProLayerstateNameGet", state,
                 [](Model&, LayerStateRecord& record) -> Got<std::wstring> { return text::fromUtf8(record.name); });
}

Got<ProLayerstate> ProLayerstateCreate(ProMdl model, const std::wstring& name) {
  return onModel("ProLayerstateCreate", model, [&](State&, Model& m) -> Got<ProLayerstate> {
    if (name.empty()) return ProBadInputs;
    if (stateNamed(m.document->record, name)) return ProExists;
    m.document->record.layerStates.emplace_back().name = text::toUtf8(name);
    m.document->touch(nullptr);
    return ProLayerstate{m.handle, name};
  });
}

ProError ProLayerstateLayerAdd(const ProLayerstate& state, const ProLayer& layer, ProLayerDisplay status) {
  return onState("ProLayerstateLayerAdd", state, [&](Model& m, LayerStateRecord& record) -> ProError {
    if (layer.owner != m.handle) return ProBadInputs;
    const LayerRecord* added = headless::layerOf(*m.document, layer.id);
    if (!added) return ProNotFound;
    LayerWalk* walk = LayerWalk::of(*m.document);
    const bool fresh = walk ? walk->noteInState(record, added->name)
                            : std::none_of(record.layers.begin(), record.layers.end(),
                                           [&](const auto& one) { return headless::sameName(one.name, added->name); });
    if (!fresh) return ProExists;
    headless::LayerStatusRecord& entry = record.layers.emplace_back();
    entry.name = added->name;
    entry.status = status;
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProLayerstateDelete(const ProLayerstate& state) {
  return onState("ProLayerstateDelete", state, [](Model& m, LayerStateRecord& record) -> ProError {
    ModelRecord& all = m.document->record;
    const std::string name = record.name;
    all.layerStates.erase(all.layerStates.begin() + (&record - all.layerStates.data()));
    emptied(all.activeLayerState, name);
    for (headless::CombinedStateRecord& one : all.combinedStates) emptied(one.layerState, name);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProLayerstateActivate(const ProLayerstate& state) {
  return onState("ProLayerstateActivate", state, [](Model& m, LayerStateRecord& record) -> ProError {
    ModelRecord& all = m.document->record;
    std::unordered_map<std::string, ProLayerDisplay> wanted;
    for (const headless::LayerStatusRecord& one : record.layers)
      wanted.try_emplace(headless::folded(one.name), one.status);
    bool changed = all.activeLayerState != record.name;
    all.activeLayerState = record.name;
    for (LayerRecord& layer : all.layers) {
      const auto found = wanted.find(headless::folded(layer.name));
      if (found != wanted.end()) changed = showSaved(layer, found->second) || changed;
    }
    if (changed) m.document->touch(nullptr);
    return ProNoError;
  });
}

}  // namespace creo
