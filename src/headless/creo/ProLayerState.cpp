// Layer states.
#include <algorithm>
#include <unordered_map>

#include "creo/ProLayer.h"
#include "headless/creo/on_top.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/layers.h"
#include "headless/store/names.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace creo {

using headless::LayerRecord;
using headless::LayerStateRecord;
using headless::LayerWalk;
using headless::Model;
using headless::ModelRecord;
using headless::onModel;
using headless::onSolid;
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

// Letters, digits, "_" and "-" alone, up to 31 characters.
bool isStateName(const std::wstring& name) {
  std::wstring plain = L"A" + name;  // a digit may be the first
  std::replace(plain.begin(), plain.end(), L'-', L'_');
  return !name.empty() && text::fits(name, text::kNameSize) && text::isName(plain);
}

// As onModel, for an operation on a layer state; ProNotFound where it has gone. body: (state, model, layer state).
// noSolid: the code for a drawing or a format.
template <class Body>
auto onState(std::string_view name, const ProLayerstate& layerState, Body&& body, ProError noSolid = ProBadInputs)
    -> std::invoke_result_t<Body, State&, Model&, LayerStateRecord&> {
  using Result = std::invoke_result_t<Body, State&, Model&, LayerStateRecord&>;
  return onModel(name, layerState.owner, [&](State& state, Model& model) -> Result {
    if (headless::hasSheets(model.type())) return Result(noSolid);
    LayerStateRecord* record = stateNamed(model.document->record, layerState.name);
    if (!record) return Result(ProNotFound);
    return body(state, model, *record);
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
  return onSolid("ProLayerstatesGet", model, [](State&, Model& m) -> Got<States> {
    States states;
    for (const LayerStateRecord& state : m.document->record.layerStates)
      states.push_back({m.handle, text::fromUtf8(state.name)});
    if (states.empty()) return ProNotFound;
    return states;
  });
}

Got<std::wstring> ProLayerstateNameGet(const ProLayerstate& state) {
  return onState("ProLayerstateNameGet", state, [](State&, Model&, LayerStateRecord& record) -> Got<std::wstring> {
    return text::fromUtf8(record.name);
  });
}

Got<ProLayerstate> ProLayerstateCreate(ProMdl model, const std::wstring& name) {
  return onSolid("ProLayerstateCreate", model, [&](State& state, Model& m) -> Got<ProLayerstate> {
    if (!isStateName(name)) {
      state.showMessage(text::format(L"%s: no layer state can be called '%s'", m.name, name));
      return ProBadInputs;
    }
    if (stateNamed(m.document->record, name)) return ProExists;
    m.document->record.layerStates.emplace_back().name = text::toUtf8(name);
    m.document->touch(nullptr);
    return ProLayerstate{m.handle, name};
  });
}

ProError ProLayerstateLayerAdd(const ProLayerstate& state, const ProLayer& layer, ProLayerDisplay status) {
  const auto add = [&](State&, Model& m, LayerStateRecord& record) -> ProError {
    if (layer.owner != m.handle) return ProBadInputs;
    const LayerRecord* added = headless::layerOf(*m.document, layer.id);
    if (!added) return ProNotFound;
    LayerWalk* walk = LayerWalk::of(*m.document);
    const bool fresh = walk ? walk->noteInState(record, added->name)
                            : std::none_of(record.layers.begin(), record.layers.end(), [&](const auto& item) {
                                return headless::sameName(item.name, added->name);
                              });
    if (!fresh) return ProExists;
    headless::LayerStatusRecord& entry = record.layers.emplace_back();
    entry.name = added->name;
    entry.status = status;
    m.document->touch(nullptr);
    return ProNoError;
  };
  return onState("ProLayerstateLayerAdd", state, add, ProInvalidType);
}

ProError ProLayerstateDelete(const ProLayerstate& state) {
  return onState("ProLayerstateDelete", state, [](State&, Model& m, LayerStateRecord& record) -> ProError {
    ModelRecord& all = m.document->record;
    const std::string name = record.name;
    all.layerStates.erase(all.layerStates.begin() + (&record - all.layerStates.data()));
    emptied(all.activeLayerState, name);
    for (headless::CombinedStateRecord& entry : all.combinedStates) emptied(entry.layerState, name);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

ProError ProLayerstateActivate(const ProLayerstate& state) {
  return onState("ProLayerstateActivate", state, [](State& session, Model& m, LayerStateRecord& record) -> ProError {
    if (!headless::isOnTop(session, m)) return ProGeneralError;
    ModelRecord& all = m.document->record;
    std::unordered_map<std::string, ProLayerDisplay> wanted;
    for (const headless::LayerStatusRecord& entry : record.layers)
      wanted.try_emplace(headless::folded(entry.name), entry.status);
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
