#include "creo/ProCombstate.h"

#include "headless/creo/on_top.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/items.h"
#include "headless/model/states.h"
#include "text/encoding.h"

namespace creo {

using headless::CombinedStateRecord;
using headless::Model;
using headless::onModel;
using headless::onSolid;
using State = headless::Session::State;

namespace {

// Writes what is referred to into a state; ProInvalidType as ProMdlCombStateCreate.
class ReferenceWriter {
 public:
  ReferenceWriter(Model& model, CombinedStateRecord& into) : model_(model), into_(into) {}

  ProError operator()(const ProLayerstate& state) const {
    const auto* record = headless::recordNamed(model_.document->record.layerStates, text::toUtf8(state.name));
    if (state.owner != model_.handle || !record || !into_.layerState.empty()) return ProInvalidType;
    into_.layerState = record->name;
    return ProNoError;
  }
  ProError operator()(const ProModelitem& item) const {
    std::string* reference = referenceOf(item.type);
    if (!reference || !reference->empty() || item.owner != model_.handle) return ProInvalidType;
    for (const headless::DefaultRep& rep : headless::kDefaultReps) {
      if (item.type != ProItemType::simplifiedRep || item.id != rep.id) continue;
      *reference = rep.name;
      return ProNoError;
    }
    const auto name = headless::itemName(model_, item);
    if (!name) return ProInvalidType;
    *reference = text::toUtf8(name.value);
    return ProNoError;
  }

 private:
  [[nodiscard]] std::string* referenceOf(ProItemType type) const {
    const bool isAssembly = model_.type() == ProMdlType::assembly;
    switch (type) {
      case ProItemType::view:
        return &into_.view;
      case ProItemType::simplifiedRep:
        return &into_.simplifiedRep;
      case ProItemType::explodedState:
        return isAssembly ? &into_.explodedState : nullptr;
      case ProItemType::styleState:
        return isAssembly ? &into_.styleState : nullptr;
      case ProItemType::crossSection:
        return &into_.crossSection;
      default:
        return nullptr;
    }
  }

  Model& model_;
  CombinedStateRecord& into_;
};

// Runs a body on the record of a combined state. body: (state, model, record).
template <class Body>
ProError onCombinedState(std::string_view name, const ProModelitem& item, Body body) {
  return onSolid(name, item.owner, [&](State& state, Model& m) -> ProError {
    if (item.type != ProItemType::combinedState) return ProBadInputs;
    const CombinedStateRecord* record = headless::recordOf(m.document->record.combinedStates, item.id);
    return record ? body(state, m, *record) : ProNotFound;
  });
}

}  // namespace

Got<int> ProViewIdFromNameGet(ProMdl model, const std::wstring& name) {
  return onModel("ProViewIdFromNameGet", model, [&](State&, Model& m) -> Got<int> {
    const auto* view = headless::recordNamed(m.document->record.views, text::toUtf8(name));
    if (!view) return ProNotFound;
    return view->id;
  });
}

Got<ProModelitem> ProMdlCombStateCreate(ProMdl model, const std::wstring& name,
                                        const std::vector<ProCombstateReference>& references, int sectionVisibility,
                                        bool exploded) {
  return onModel("ProMdlCombStateCreate", model, [&](State&, Model& m) -> Got<ProModelitem> {
    if (m.type() == ProMdlType::drawing) return ProInvalidType;
    if (name.empty() || references.empty()) return ProBadInputs;
    auto& states = m.document->record.combinedStates;
    if (headless::recordNamed(states, text::toUtf8(name))) return ProBadInputs;
    CombinedStateRecord made;
    for (const ProCombstateReference& reference : references)
      if (const ProError result = std::visit(ReferenceWriter(m, made), reference)) return result;
    made.exploded = exploded;
    made.sectionVisibility = sectionVisibility;
    CombinedStateRecord& added = headless::addRecord(states, text::toUtf8(name));
    made.id = added.id;
    made.name = std::move(added.name);
    added = std::move(made);
    m.document->touch(nullptr);
    return ProModelitem{ProItemType::combinedState, added.id, m.handle, {}};
  });
}

ProError ProCombstateActivate(const ProModelitem& item) {
  return onCombinedState("ProCombstateActivate", item,
                         [](State& state, const Model& m, const CombinedStateRecord& record) -> ProError {
                           if (!headless::isInFront(state, m)) return ProGeneralError;
                           return headless::activateCombinedState(state.models, m, record);
                         });
}

ProError ProCombstateDelete(const ProModelitem& item) {
  return onCombinedState(
      "ProCombstateDelete", item, [&](State& state, const Model& m, const CombinedStateRecord& record) {
        if (!headless::sameName(m.document->record.activeCombinedState, record.name))
          return headless::deleteState(m, item);
        state.showMessage(m.name + L": the combined state " + text::fromUtf8(record.name) + L" is the active one");
        return ProGeneralError;
      });
}

}  // namespace creo
