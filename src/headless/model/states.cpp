#include "headless/model/states.h"

#include <iterator>
#include <unordered_map>

#include "headless/model/datums.h"
#include "headless/model/features.h"
#include "headless/model/models.h"
#include "headless/model/remove_feature.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {

using creo::ProItemType;

namespace {

// A kind of thing by what refers to it; null members: nothing does.
struct Kind {
  ProItemType type;
  const wchar_t* word;
  std::string CombinedStateRecord::*reference;
  std::string ModelRecord::*active;
};
constexpr Kind kKinds[] = {
    {ProItemType::view, L"view", &CombinedStateRecord::view, &ModelRecord::activeView},
    {ProItemType::simplifiedRep, L"simplified representation", &CombinedStateRecord::simplifiedRep, nullptr},
    {ProItemType::explodedState, L"exploded state", &CombinedStateRecord::explodedState,
     &ModelRecord::activeExplodedState},
    {ProItemType::styleState, L"style", &CombinedStateRecord::styleState, &ModelRecord::activeStyleState},
    {ProItemType::crossSection, L"cross section", &CombinedStateRecord::crossSection, &ModelRecord::activeCrossSection},
    {ProItemType::combinedState, L"combined state", nullptr, &ModelRecord::activeCombinedState},
};

bool isDefaultRep(std::string_view name) {
  return std::any_of(std::begin(kDefaultReps), std::end(kDefaultReps),
                     [name](const DefaultRep& rep) { return sameName(rep.name, name); });
}

bool isThere(ModelRecord& record, ProItemType type, std::string_view name) {
  switch (type) {
    case ProItemType::view:
      return recordNamed(record.views, name);
    case ProItemType::simplifiedRep:
      return isDefaultRep(name) || recordNamed(record.simplifiedReps, name);
    case ProItemType::explodedState:
      return recordNamed(record.explodedStates, name);
    case ProItemType::styleState:
      return recordNamed(record.styleStates, name);
    case ProItemType::crossSection:
      return recordNamed(record.crossSections, name);
    default:
      return false;
  }
}

// What the state refers to and isn't there, in words; empty: all is there.
std::wstring goneFrom(ModelRecord& record, const CombinedStateRecord& state) {
  for (const Kind& kind : kKinds)
    if (kind.reference && !(state.*kind.reference).empty() && !isThere(record, kind.type, state.*kind.reference))
      return text::format(L"%s %s", kind.word, text::fromUtf8(state.*kind.reference));
  if (!state.layerState.empty() && !recordNamed(record.layerStates, state.layerState))
    return text::format(L"layer state %s", text::fromUtf8(state.layerState));
  return {};
}

// The layers show what the state says, until it is saved with them.
void showLayers(ModelRecord& record, const LayerStateRecord& state) {
  std::unordered_map<std::string, LayerRecord*> layers;
  for (LayerRecord& layer : record.layers) layers.emplace(folded(layer.name), &layer);
  for (const LayerStatusRecord& entry : state.layers)
    if (const auto layer = layers.find(folded(entry.name)); layer != layers.end()) {
      // As when the layer state itself is shown: the model keeps the statuses.
      layer->second->status = entry.status;
      layer->second->unsaved.reset();
    }
}

template <class Record>
creo::ProError deleteFrom(const Model& model, std::vector<Record>& records, const creo::ProModelitem& state) {
  Record* record = recordOf(records, state.id);
  if (!record) return creo::ProNotFound;
  const std::string name = std::move(record->name);
  records.erase(records.begin() + (record - records.data()));
  replaceReferences(model, state.type, name, {});
  model.document->touch(nullptr);
  return creo::ProNoError;
}

// The dimension of a cross section's distance goes with it.
void dropDistance(ModelRecord& record, int section) {
  const CrossSectionRecord* present = recordOf(record.crossSections, section);
  const int dimension = present ? present->dimension : 0;
  if (dimension == 0) return;
  std::erase_if(record.dimensions,
                [&](const DimensionRecord& entry) { return !entry.reference && entry.id == dimension; });
  dropReferences(record, {}, {dimension});
}

}  // namespace

void replaceReferences(const Model& model, ProItemType type, std::string_view from, std::string_view to) {
  ModelRecord& record = model.document->record;
  const auto replace = [&](std::string& name) {
    if (!name.empty() && sameName(name, from)) name = to;
  };
  for (const Kind& kind : kKinds) {
    if (kind.type != type) continue;
    if (kind.active) replace(record.*kind.active);
    if (kind.reference)
      for (CombinedStateRecord& state : record.combinedStates) replace(state.*kind.reference);
  }
  if (type == ProItemType::simplifiedRep) replace(model.document->activeRep);
  if (type == ProItemType::feature)
    for (CrossSectionRecord& section : record.crossSections) replace(section.plane);
  if (type == ProItemType::feature) csysRenamed(model, from, to);
}

creo::ProError deleteState(const Model& model, const creo::ProModelitem& state) {
  ModelRecord& record = model.document->record;
  switch (state.type) {
    case ProItemType::simplifiedRep:
      return deleteFrom(model, record.simplifiedReps, state);
    case ProItemType::explodedState:
      return deleteFrom(model, record.explodedStates, state);
    case ProItemType::combinedState:
      return deleteFrom(model, record.combinedStates, state);
    case ProItemType::crossSection:
      dropDistance(record, state.id);
      return deleteFrom(model, record.crossSections, state);
    default:
      return creo::ProBadInputs;
  }
}

void makeActive(const Model& model, std::string ModelRecord::*active, std::string_view name) {
  std::string& current = model.document->record.*active;
  if (current == name) return;
  current = name;
  model.document->touch(nullptr);
}

namespace {

// shown: whether the components that the representation in memory substitutes show theirs, or their masters.
void showSubstitutes(const Models& models, const Model& assembly, bool shown) {
  const auto& document = assembly.document;
  const auto* rep = recordNamed(document->record.simplifiedReps, document->activeRep);
  if (!rep) return;
  for (const SimplifiedRepItemRecord& item : rep->items) {
    const auto feature = featureOf(assembly, item.feature);
    if (item.action != creo::ProSimprepAction::substitute || !feature || !feature->isComponent()) continue;
    const auto handle = models.inMemory(featureName(*feature), feature->component()->type);
    if (!handle) continue;
    ModelDocument& component = *models.find(handle.value)->document;
    if (shown)
      component.activeRep = item.substitute;
    else if (sameName(component.activeRep, item.substitute))
      component.activeRep.clear();
  }
}

}  // namespace

void showRep(const Models& models, const Model& solid, std::string_view name) {
  showSubstitutes(models, solid, false);
  // The document says nothing of the master.
  solid.document->activeRep = sameName(name, kMasterForm.name) ? std::string_view() : name;
  showSubstitutes(models, solid, true);
}

creo::ProError activateCombinedState(const Models& models, const Model& model, const CombinedStateRecord& state) {
  ModelRecord& record = model.document->record;
  if (const std::wstring gone = goneFrom(record, state); !gone.empty()) {
    models.message(text::format(L"%s: the combined state %s refers to the %s, which isn't there", model.name,
                                text::fromUtf8(state.name), gone));
    return creo::ProNotFound;
  }
  if (!state.view.empty()) makeActive(model, &ModelRecord::activeView, state.view);
  if (!state.layerState.empty()) {
    showLayers(record, *recordNamed(record.layerStates, state.layerState));
    makeActive(model, &ModelRecord::activeLayerState, state.layerState);
  }
  if (!state.simplifiedRep.empty()) showRep(models, model, state.simplifiedRep);
  if (!state.explodedState.empty())
    makeActive(model, &ModelRecord::activeExplodedState, state.exploded ? state.explodedState : std::string());
  if (!state.styleState.empty()) makeActive(model, &ModelRecord::activeStyleState, state.styleState);
  if (!state.crossSection.empty()) {
    makeActive(model, &ModelRecord::activeCrossSection, state.crossSection);
    CrossSectionRecord& section = *recordNamed(record.crossSections, state.crossSection);
    const bool visible = state.sectionVisibility != 0;
    if (section.visible != visible) model.document->touch(nullptr);
    section.visible = visible;
  }
  makeActive(model, &ModelRecord::activeCombinedState, state.name);
  return creo::ProNoError;
}

}  // namespace headless
