// Actions on layer states: which layers show, under a name.
#include "actions/model/layers.h"
#include "actions/on_top.h"
#include "actions/visits.h"
#include "language/compare.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;
using creo::ProLayerstate;

// A word that is no status leaves the layer as it shows now.
creo::ProLayerDisplay statusInState(const creo::ProLayer& layer, std::wstring_view word) {
  if (const auto status = layerStatus(word)) return *status;
  const auto shown = creo::ProLayerDisplaystatusGet(layer);
  return shown ? shown.value : creo::ProLayerDisplay::normal;
}

void addToState(const ProLayerstate& state, const NamedLayer& found, std::wstring_view word) {
  const bool added =
      creo::ProLayerstateLayerAdd(state, found.layer, statusInState(found.layer, word)) == creo::ProNoError;
  if (added)
    core::logIndented(text::format(L"%s - added", found.name), core::kNormal, 2);
  else
    core::logWrite(text::format(L"%s - can't add to layer state, could be already inside", found.name), core::kWarning);
}

Outcome addLayerState(const Task& task) {
  const auto name = filledIn(task, task.attribute(L"statename"));
  if (!name) return done;
  const auto state = creo::ProLayerstateCreate(task.model(), *name);
  if (!state) {
    core::logWrite(L"Failure while create new state (Name could be already existing)", core::kError);
    return done;
  }
  core::logIndented(L"Created new state", core::kNormal, 1);
  for (const Task::Numbered& pattern : task.numberedAll(L"name_", kMostLayerNames)) {
    const auto word = task.numbered(L"value_%d", pattern.number);
    if (!word) continue;
    eachLayer(task.model(), pattern.value, [&](const NamedLayer& found) {
      addToState(state.value, found, *word);
      return creo::ProNoError;
    });
  }
  return done;
}

struct NamedState {
  ProLayerstate state;
  std::wstring name;
};
std::vector<NamedState> statesThatFit(creo::ProMdl model, std::wstring_view pattern) {
  std::vector<NamedState> states;
  for (const ProLayerstate& layerstate : listOrNone(creo::ProLayerstatesGet(model), L"The layer states")) {
    auto name = creo::ProLayerstateNameGet(layerstate);
    if (!name)
      cantRead(L"The name of a layer state");
    else if (matches(pattern, name.value))
      states.push_back({layerstate, std::move(name.value)});
  }
  return states;
}

Outcome deleteLayerState(const Task& task) {
  for (const Task::Numbered& name : task.numberedAll(L"name_", kMostLayerNames)) {
    const auto pattern = filledIn(task, name.value);
    if (!pattern) continue;
    for (const NamedState& found : statesThatFit(task.model(), *pattern)) {
      if (creo::ProLayerstateDelete(found.state) == creo::ProNoError)
        core::logIndented(L"Delete layerstate: " + found.name, core::kNormal, 1);
      else
        core::logWrite(L"Can't delete layerstate: " + found.name, core::kError);
    }
  }
  return done;
}

// As ProLayerstateActivate, also for a model that isn't on top.
creo::ProError activate(creo::ProMdl model, const ProLayerstate& state) {
  return onTop(model, [&state] { return creo::ProLayerstateActivate(state); });
}

Outcome setLayerState(const Task& task) {
  const auto pattern = filledIn(task, task.attribute(L"statename"));
  if (!pattern) return done;
  const auto states = statesThatFit(task.model(), *pattern);
  if (states.empty())
    core::logWrite(L"Layerstate couldn't be found: " + *pattern, core::kError);
  else if (activate(task.model(), states.front().state) == creo::ProNoError)
    core::logIndented(L"Set layerstate: " + states.front().name, core::kNormal, 1);
  else
    core::logWrite(L"Can't set layerstate: " + states.front().name, core::kError);
  return done;
}

constexpr Attribute kAddAttributes[] = {
    {.name = L"statename", .variables = true, .need = Need::needed, .about = "the state's name"},
    {.name = L"name_%d", .kind = Kind::pattern, .need = Need::needed, .about = "layers"},
    {.name = L"value_%d",
     .kind = Kind::word,
     .words = L"normal|display|blank",
     .about = "how they show; any other word: as they show now"},
};
constexpr Attribute kDeleteAttributes[] = {
    {.name = L"name_%d", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "layer states"},
};
constexpr Attribute kSetAttributes[] = {
    {.name = L"statename", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "layer states"},
};
constexpr Effects kEffects{.changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"addLayerState",
     .place = 117,
     .group = Group::ownModelTest,
     .title = L"add layer state",
     .conditions = kOnLayers,
     .attributes = kAddAttributes,
     .effects = kEffects,
     .about = "makes a layer state of layers and how they show",
     .function = &addLayerState},
    {.key = L"deleteLayerState",
     .place = 118,
     .group = Group::ownModelTest,
     .title = L"delete layer state",
     .conditions = kOnLayers,
     .attributes = kDeleteAttributes,
     .effects = kEffects,
     .about = "deletes layer states",
     .function = &deleteLayerState},
    {.key = L"setLayerState",
     .place = 119,
     .group = Group::ownModelTest,
     .title = L"set layer state",
     .conditions = kOnLayers,
     .attributes = kSetAttributes,
     .effects = {.changes = Touched::model | Touched::session},
     .about = "activates the first layer state that fits",
     .function = &setLayerState},
};

}  // namespace

std::span<const Action> layerStateActions() { return kActions; }

}  // namespace actions
