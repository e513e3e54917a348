#include "creo/ProExpldstate.h"

#include "headless/creo/solid_operation.h"
#include "headless/model/states.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::ModelRecord;
using headless::onSolid;
using headless::StateRecord;
using State = headless::Session::State;

namespace {

// Makes the state of that type active. gone: the code for one that the model hasn't.
ProError activate(std::string_view operation, const ProModelitem& item, ProItemType type,
                  std::vector<StateRecord> ModelRecord::*list, std::string ModelRecord::*active, ProError gone) {
  return onSolid(operation, item.owner, [&](State&, Model& m) -> ProError {
    if (item.type != type) return ProBadInputs;
    const StateRecord* record = headless::recordOf(m.document->record.*list, item.id);
    if (!record) return gone;
    headless::makeActive(m, active, record->name);
    return ProNoError;
  });
}

}  // namespace

Got<ProModelitem> ProExpldstateCreate(ProMdl assembly, const std::wstring& name) {
  return onSolid("ProExpldstateCreate", assembly, [&](State&, Model& m) -> Got<ProModelitem> {
    if (m.type() != ProMdlType::assembly || name.empty()) return ProBadInputs;
    auto& states = m.document->record.explodedStates;
    if (headless::recordNamed(states, text::toUtf8(name))) return ProExists;
    const StateRecord& added = headless::addRecord(states, text::toUtf8(name));
    m.document->touch(nullptr);
    return ProModelitem{ProItemType::explodedState, added.id, m.handle, {}};
  });
}

ProError ProExpldstateActivate(const ProModelitem& state) {
  return activate("ProExpldstateActivate", state, ProItemType::explodedState, &ModelRecord::explodedStates,
                  &ModelRecord::activeExplodedState, ProNotFound);
}

ProError ProExpldstateDelete(const ProModelitem& state) {
  return onSolid("ProExpldstateDelete", state.owner, [&](State&, Model& m) -> ProError {
    if (state.type != ProItemType::explodedState) return ProBadInputs;
    return headless::deleteState(m, state);
  });
}

Got<ProModelitem> ProCompdisplayInit(ProMdl assembly, int id) {
  return onSolid("ProCompdisplayInit", assembly, [&](State&, Model& m) -> Got<ProModelitem> {
    if (!headless::recordOf(m.document->record.styleStates, id)) return ProBadInputs;
    return ProModelitem{ProItemType::styleState, id, m.handle, {}};
  });
}

ProError ProCompdisplayActivate(const ProModelitem& style) {
  return activate("ProCompdisplayActivate", style, ProItemType::styleState, &ModelRecord::styleStates,
                  &ModelRecord::activeStyleState, ProBadInputs);
}

}  // namespace creo
