#include "creo/ProSelection.h"

#include "creo/ProReference.h"
#include "headless/creo/operation.h"
#include "headless/model/items.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

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
  return headless::onModel("ProSelbufferSelectionAdd", selection.item.owner, [&](State& state, headless::Model&) {
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
                           [&](State&, headless::Model&) -> Got<ProModelitem> { return selection.item; });
}

Got<ProSelection> ProSelectionAlloc(const ProModelitem& item) {
  return headless::onModel("ProSelectionAlloc", item.owner, [&](State&, headless::Model&) -> Got<ProSelection> {
    return ProSelection{item, {}};
  });
}

Got<ProReference> ProSelectionToReference(const ProSelection& selection) {
  const ProModelitem& item = selection.item;
  return headless::onModel("ProSelectionToReference", item.owner, [&](State&, headless::Model& m) -> Got<ProReference> {
    for (const headless::NamedItem& entry : headless::namedItems(m, item.type))
      if (entry.id == item.id) return ProReference{item};
    return ProNotFound;
  });
}

Got<std::vector<ProMdl>> ProSelectionAsmcomppathGet(const ProSelection& selection) {
  return operation("ProSelectionAsmcomppathGet", [&](State&) -> Got<std::vector<ProMdl>> {
    if (selection.componentPath.empty()) return ProNotFound;
    return selection.componentPath;
  });
}

Got<ProMdl> ProAsmcomppathMdlGet(const std::vector<ProMdl>& path) {
  return operation("ProAsmcomppathMdlGet", [&](State& state) -> Got<ProMdl> {
    if (path.empty() || !state.models.find(path.back())) return ProBadInputs;
    return path.back();
  });
}

}  // namespace creo
