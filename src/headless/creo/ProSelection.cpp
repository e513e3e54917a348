#include "creo/ProSelection.h"

#include <algorithm>

#include "creo/ProReference.h"
#include "headless/creo/on_top.h"
#include "headless/creo/operation.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "headless/model/placed.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

bool isThere(const headless::Model& model, const ProModelitem& item) {
  const auto items = headless::namedItems(model, item.type);
  return std::any_of(items.begin(), items.end(), [&](const headless::NamedItem& entry) { return entry.id == item.id; });
}

// One step down a path; null where it doesn't lead to a component whose model is in memory.
const headless::Model* stepDown(const State& state, const headless::Model& assembly, int id) {
  const auto component = headless::featureOf(assembly, id);
  return component && component->isComponent() ? headless::componentModel(state.models, *component) : nullptr;
}

// Is what lies at the end of the path displayed with the assembly at its top? A component that is suppressed, or left
// out of the representation, isn't.
bool isDisplayed(const State& state, const ProAsmcomppath& path, ProMdl end) {
  const headless::Model* at = state.models.find(path.assembly);
  for (const int id : path.components) {
    if (!at || !headless::hasGeometry(*at, id) || headless::LeftOut(*at).has(id)) return false;
    at = stepDown(state, *at, id);
  }
  return at && at->handle == end;
}

}  // namespace

Got<std::vector<ProSelection>> ProSelbufferSelectionsGet() {
  return operation("ProSelbufferSelectionsGet", [](State& state) -> Got<std::vector<ProSelection>> {
    if (state.selections.empty()) return ProNotFound;
    return state.selections;
  });
}

ProError ProSelbufferClear() {
  return operation("ProSelbufferClear", [](State& state) {
    state.selections.clear();
    return ProNoError;
  });
}

ProError ProSelbufferSelectionAdd(const ProSelection& selection) {
  return headless::onModel("ProSelbufferSelectionAdd", selection.item.owner,
                           [&](State& state, headless::Model& owner) -> ProError {
                             const bool inAssembly = !selection.path.components.empty();
                             const auto* shown = inAssembly ? state.models.find(selection.path.assembly) : &owner;
                             if (!shown) return ProBadInputs;
                             if (!headless::isInFront(state, *shown)) return ProGeneralError;
                             if (inAssembly && !isDisplayed(state, selection.path, owner.handle))
                               return ProGeneralError;
                             state.selections.push_back(selection);
                             return ProNoError;
                           });
}

ProError ProSelectionHighlight(const ProSelection& selection, int color) {
  return headless::onModel("ProSelectionHighlight", selection.item.owner, [&](State& state, headless::Model&) {
    state.highlights.emplace_back(selection, color);
    return ProNoError;
  });
}

Got<ProModelitem> ProSelectionModelitemGet(const ProSelection& selection) {
  return headless::onModel("ProSelectionModelitemGet", selection.item.owner,
                           [&](State&, headless::Model& owner) -> Got<ProModelitem> {
                             if (!isThere(owner, selection.item)) return ProNotFound;
                             return selection.item;
                           });
}

Got<ProSelection> ProSelectionAlloc(const ProModelitem& item) {
  return headless::onModel("ProSelectionAlloc", item.owner, [&](State&, headless::Model&) -> Got<ProSelection> {
    return ProSelection{item, {}};
  });
}

Got<ProReference> ProSelectionToReference(const ProSelection& selection) {
  const ProModelitem& item = selection.item;
  return headless::onModel("ProSelectionToReference", item.owner, [&](State&, headless::Model& m) -> Got<ProReference> {
    if (!isThere(m, item)) return ProNotFound;
    return ProReference{item};
  });
}

Got<ProAsmcomppath> ProSelectionAsmcomppathGet(const ProSelection& selection) {
  return operation("ProSelectionAsmcomppathGet", [&](State&) -> Got<ProAsmcomppath> {
    if (selection.path.components.empty()) return ProNotFound;
    return selection.path;
  });
}

Got<ProMdl> ProAsmcomppathMdlGet(const ProAsmcomppath& path) {
  return headless::onModel("ProAsmcomppathMdlGet", path.assembly,
                           [&](State& state, headless::Model& top) -> Got<ProMdl> {
                             const headless::Model* at = &top;
                             for (const int id : path.components)
                               if (at = stepDown(state, *at, id); !at) return ProNotFound;
                             return at->handle;
                           });
}

}  // namespace creo
