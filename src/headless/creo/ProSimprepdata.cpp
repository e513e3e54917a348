// What simplified representations do with features and components.
#include "creo/ProSimprep.h"

#include <algorithm>

#include "headless/creo/assembly_operation.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "headless/model/states.h"
#include "text/encoding.h"
#include "text/units.h"

namespace creo {

using headless::Model;
using headless::onAssembly;
using headless::onModel;
using headless::onSolid;
using headless::operation;
using headless::SimplifiedRepItemRecord;
using headless::SimplifiedRepRecord;
using State = headless::Session::State;

namespace {

bool isAction(ProSimprepAction action) {
  switch (action) {
    case ProSimprepAction::reverse:
    case ProSimprepAction::include:
    case ProSimprepAction::exclude:
    case ProSimprepAction::geometry:
    case ProSimprepAction::substitute:
    case ProSimprepAction::graphics:
    case ProSimprepAction::symbolic:
    case ProSimprepAction::boundaryBox:
    case ProSimprepAction::lightGraphics:
      return true;
    case ProSimprepAction::none:
      break;
  }
  return false;
}

bool isRepName(const std::wstring& name) { return !name.empty() && text::fits(name, text::kNameSize); }

// An item that the data lacks keeps what it had; it goes where its action is none.
void describeItem(std::vector<SimplifiedRepItemRecord>& items, SimplifiedRepItemRecord&& item) {
  const auto found = std::find_if(items.begin(), items.end(), [&](const SimplifiedRepItemRecord& record) {
    return record.feature == item.feature;
  });
  if (item.action == ProSimprepAction::none) {
    if (found != items.end()) items.erase(found);
  } else if (found != items.end()) {
    item.extra = std::move(found->extra);
    *found = std::move(item);
  } else {
    items.push_back(std::move(item));
  }
}

Got<SimplifiedRepItemRecord> itemRecord(const Model& model, const ProSimprepdataitem& item, std::string_view rep) {
  // What is done with a feature that has gone can still be taken back.
  if (item.action.type != ProSimprepAction::none && !headless::featureOf(model, item.feature)) return ProNotFound;
  const ProSubstitution& by = item.action.substitution;
  SimplifiedRepItemRecord record;
  record.feature = item.feature;
  record.action = item.action.type;
  record.substitution = by.kind;
  record.substitute = text::toUtf8(by.rep);
  if (by.model == model.handle && headless::sameName(record.substitute, rep)) return ProBadInputs;
  return record;
}

// id: of the representation that is described; 0 for a new one.
ProError describe(const Model& model, int id, const ProSimprepdata& data, SimplifiedRepRecord& into) {
  if (!isRepName(data.name) || !isAction(data.defaultAction)) return ProBadInputs;
  std::string name = text::toUtf8(data.name);
  const SimplifiedRepRecord* other = headless::recordNamed(model.document->record.simplifiedReps, name);
  const bool isDefault = std::any_of(std::begin(headless::kDefaultReps), std::end(headless::kDefaultReps),
                                     [&](const auto& entry) { return headless::sameName(entry.name, name); });
  if (isDefault || (other && other->id != id)) return ProExists;
  std::vector<SimplifiedRepItemRecord> described;
  for (const ProSimprepdataitem& item : data.items) {
    auto record = itemRecord(model, item, name);
    if (!record) return record.error;
    described.push_back(std::move(record.value));
  }
  into.name = std::move(name);
  into.defaultAction = data.defaultAction;
  for (SimplifiedRepItemRecord& candidate : described) describeItem(into.items, std::move(candidate));
  return ProNoError;
}

ProSimprepdataitem itemData(const SimplifiedRepItemRecord& record) {
  return {record.feature, {record.action, {record.substitution, {}, text::fromUtf8(record.substitute)}}};
}

}  // namespace

Got<ProSubstitution> ProSubstitutionInit(ProSubstitutionKind kind, const ProModelitem& rep) {
  return onSolid("ProSubstitutionInit", rep.owner, [&](State&, Model& m) -> Got<ProSubstitution> {
    const auto fitting =
        m.type() == ProMdlType::assembly ? ProSubstitutionKind::assemblyRep : ProSubstitutionKind::partRep;
    if (kind != fitting || rep.type != ProItemType::simplifiedRep) return ProBadInputs;
    for (const headless::DefaultRep& entry : headless::kDefaultReps)
      if (entry.id == rep.id) return ProSubstitution{kind, m.handle, text::fromUtf8(entry.name)};
    const auto name = headless::itemName(m, rep);
    if (!name) return name.error;
    return ProSubstitution{kind, m.handle, name.value};
  });
}

Got<ProSimprepItemAction> ProSimprepActionInit(ProSimprepAction type,
                                               const std::optional<ProSubstitution>& substitution) {
  return operation("ProSimprepActionInit", [&](State&) -> Got<ProSimprepItemAction> {
    const bool isKnown = isAction(type) || type == ProSimprepAction::none;
    if (!isKnown || substitution.has_value() != (type == ProSimprepAction::substitute)) return ProBadInputs;
    return ProSimprepItemAction{type, substitution.value_or(ProSubstitution{})};
  });
}

Got<ProAsmcomppath> ProAsmcomppathInit(ProMdl assembly, const std::vector<int>& components) {
  return onModel("ProAsmcomppathInit", assembly, [&](State&, Model& m) -> Got<ProAsmcomppath> {
    const auto first = components.empty() ? std::nullopt : headless::featureOf(m, components.front());
    if (!first || !first->isComponent()) return ProBadInputs;
    return ProAsmcomppath{assembly, components};
  });
}

Got<ProSimprepdataitem> ProSimprepdataitemInit(const ProAsmcomppath& path, int /*feature*/,
                                               const ProSimprepItemAction& action) {
  return operation("ProSimprepdataitemInit", [&](State&) -> Got<ProSimprepdataitem> {
    const bool isKnown = isAction(action.type) || action.type == ProSimprepAction::none;
    if (path.components.size() != 1 || !isKnown) return ProBadInputs;
    return ProSimprepdataitem{path.components.front(), action};
  });
}

Got<ProSimprepdata> ProSimprepdataAlloc(const std::wstring& name, ProSimprepAction defaultAction) {
  return operation("ProSimprepdataAlloc", [&](State&) -> Got<ProSimprepdata> {
    if (!isRepName(name) || !isAction(defaultAction)) return ProBadInputs;
    return ProSimprepdata{name, defaultAction, {}};
  });
}

ProError ProSimprepdataitemAdd(ProSimprepdata& data, const ProSimprepdataitem& item) {
  return operation("ProSimprepdataitemAdd", [&](State&) -> ProError {
    if (item.feature <= 0) return ProBadInputs;
    data.items.push_back(item);
    return ProNoError;
  });
}

Got<ProSimprepdata> ProSimprepdataGet(const ProModelitem& rep) {
  return onAssembly("ProSimprepdataGet", rep.owner, [&](State&, Model& m) -> Got<ProSimprepdata> {
    if (rep.type != ProItemType::simplifiedRep) return ProBadInputs;
    const SimplifiedRepRecord* record = headless::recordOf(m.document->record.simplifiedReps, rep.id);
    if (!record) return ProNotFound;
    ProSimprepdata data{text::fromUtf8(record->name), record->defaultAction, {}};
    for (const SimplifiedRepItemRecord& item : record->items) data.items.push_back(itemData(item));
    return data;
  });
}

ProError ProSimprepdataSet(const ProModelitem& rep, const ProSimprepdata& data) {
  return onAssembly("ProSimprepdataSet", rep.owner, [&](State&, Model& m) -> ProError {
    if (rep.type != ProItemType::simplifiedRep) return ProBadInputs;
    SimplifiedRepRecord* record = headless::recordOf(m.document->record.simplifiedReps, rep.id);
    if (!record) return ProNotFound;
    const std::string former = record->name;
    if (const ProError result = describe(m, rep.id, data, *record)) return result;
    headless::replaceReferences(m, rep.type, former, record->name);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<ProModelitem> ProSimprepCreate(ProMdl solid, const ProSimprepdata& data) {
  return onAssembly("ProSimprepCreate", solid, [&](State&, Model& m) -> Got<ProModelitem> {
    SimplifiedRepRecord described;
    if (const ProError result = describe(m, 0, data, described)) return result;
    SimplifiedRepRecord& added = headless::addRecord(m.document->record.simplifiedReps, {});
    described.id = added.id;
    added = std::move(described);
    m.document->touch(nullptr);
    return ProModelitem{ProItemType::simplifiedRep, added.id, m.handle, {}};
  });
}

ProError ProSimprepDelete(const ProModelitem& rep) {
  return onSolid("ProSimprepDelete", rep.owner, [&](State& state, Model& m) -> ProError {
    if (rep.type != ProItemType::simplifiedRep || rep.id < 0) return ProBadInputs;
    const SimplifiedRepRecord* record = headless::recordOf(m.document->record.simplifiedReps, rep.id);
    if (record && headless::sameName(record->name, m.document->activeRep)) {
      state.showMessage(m.name + L": the simplified representation " + text::fromUtf8(record->name) + L" is in use");
      return ProGeneralError;
    }
    return headless::deleteState(m, rep);
  });
}

}  // namespace creo
