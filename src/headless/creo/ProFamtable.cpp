#include "creo/ProFamtable.h"

#include "headless/creo/operation.h"
#include "headless/model/family.h"
#include "headless/model/retrieve.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace creo {

using headless::FamilyTableRecord;
using headless::Model;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

namespace {

bool isSolid(const Model& model) { return model.type() == ProMdlType::part || model.type() == ProMdlType::assembly; }

// ProNotFound: no table; ProNoFamtable: one without rows.
ProError checked(const FamilyTableRecord* table) {
  if (!table) return ProNotFound;
  return table->instances.empty() ? ProNoFamtable : ProNoError;
}

// Null for a row that the model's own table doesn't have.
headless::RowRecord* rowOf(const Model& model, const ProFaminstance& instance) {
  headless::RowRecord* row = model.document->row(instance.name);
  return row && row->parent == model.row ? row : nullptr;
}

Got<ProMdl> inMemory(std::string_view operationName, const ProFaminstance& instance) {
  return onModel(operationName, instance.owner, [&](State& state, Model& m) -> Got<ProMdl> {
    headless::RowRecord* row = rowOf(m, instance);
    if (!row) return ProNotFound;
    const auto document = m.document;  // the model may move while another one comes in
    return headless::retrieveInstance(state.models, document, *row);
  });
}

}  // namespace

ProError ProSolidFamtableCheck(ProMdl solid) {
  return onModel("ProSolidFamtableCheck", solid, [](State&, Model& m) -> ProError {
    if (!isSolid(m)) return ProBadInputs;
    return checked(m.document->tableOf(m.row));
  });
}

Got<ProFamtable> ProFamtableInit(ProMdl solid) {
  return onModel("ProFamtableInit", solid, [](State&, Model& m) -> Got<ProFamtable> {
    if (!isSolid(m)) return ProBadInputs;
    if (!m.document->tableOf(m.row)) return ProNotFound;
    return ProFamtable{m.handle};
  });
}

ProError ProFamtableCheck(const ProFamtable& table) {
  return onModel("ProFamtableCheck", table.owner, [](State& state, Model& m) -> ProError {
    const FamilyTableRecord* record = m.document->tableOf(m.row);
    ProError result = checked(record);
    if (result != ProNoError) return result;
    for (const auto& row : record->instances) {
      const std::wstring fault = headless::rowFault(*m.document, *row);
      if (fault.empty()) continue;
      state.models.message(text::format(L"%s: the row %s can't be read: %s", m.name, text::fromUtf8(row->name), fault));
      result = ProGeneralError;
    }
    return result;
  });
}

ProError ProFamtableInstanceVisit(const ProFamtable& table, Visitor<ProFaminstance> visitor) {
  return onModel("ProFamtableInstanceVisit", table.owner, [&](State&, Model& m) -> ProError {
    std::vector<ProFaminstance> rows;
    if (const FamilyTableRecord* record = m.document->tableOf(m.row))
      for (const auto& row : record->instances) rows.push_back({text::upper(text::fromUtf8(row->name)), m.handle});
    return headless::visit<ProFaminstance>(rows, visitor);
  });
}

Got<ProVerification> ProFaminstanceIsVerified(const ProFaminstance& instance) {
  return onModel("ProFaminstanceIsVerified", instance.owner, [&](State&, Model& m) -> Got<ProVerification> {
    const headless::RowRecord* row = rowOf(m, instance);
    return row ? Got<ProVerification>(row->verification) : ProNotFound;
  });
}

Got<ProInstanceLock> ProFaminstanceCheck(const ProFaminstance& instance) {
  return onModel("ProFaminstanceCheck", instance.owner, [&](State&, Model& m) -> Got<ProInstanceLock> {
    const headless::RowRecord* row = rowOf(m, instance);
    if (!row) return ProNotFound;
    return row->locked ? ProInstanceLock::locked : ProInstanceLock::none;
  });
}

Got<ProMdl> ProFaminstanceMdlGet(const ProFaminstance& instance) {
  return onModel("ProFaminstanceMdlGet", instance.owner, [&](State& state, Model& m) -> Got<ProMdl> {
    const headless::RowRecord* row = rowOf(m, instance);
    if (!row) return ProNotFound;
    return headless::instanceInMemory(state.models, *m.document, *row);
  });
}

Got<ProMdl> ProFaminstanceCreate(const ProFaminstance& instance) { return inMemory("ProFaminstanceCreate", instance); }

Got<ProMdl> ProFaminstanceRetrieve(const ProFaminstance& instance) {
  return inMemory("ProFaminstanceRetrieve", instance);
}

Got<ProMdl> ProFaminstanceGenericGet(ProMdl instance, bool immediate) {
  return onModel("ProFaminstanceGenericGet", instance, [&](State& state, Model& m) -> Got<ProMdl> {
    if (!m.row) return ProNotFound;
    if (immediate && m.row->parent) {
      const auto there = headless::instanceInMemory(state.models, *m.document, *m.row->parent);
      return there ? there : Got<ProMdl>(ProGeneralError);
    }
    return state.models.inMemory(m.document->name, m.type());
  });
}

Got<ProGenericInfo> ProFaminstanceImmediategenericinfoGet(ProMdl instance) {
  return onModel("ProFaminstanceImmediategenericinfoGet", instance, [](State&, Model& m) -> Got<ProGenericInfo> {
    if (!m.row) return ProNotFound;
    return ProGenericInfo{headless::genericName(m), m.type()};
  });
}

Got<ProFamtableItem> ProParameterToFamtableItem(const ProParameter& parameter) {
  return operation("ProParameterToFamtableItem", [&](State& state) -> Got<ProFamtableItem> {
    const auto place = state.parameters.find(parameter);
    if (!place) return place.error;
    if (!place.value.ofModel) return ProBadInputs;
    return ProFamtableItem{ProFamitemType::parameter, text::fromUtf8(place.value.record().name)};
  });
}

ProError ProFamtableItemAdd(const ProFamtable& table, const ProFamtableItem& item) {
  return onModel("ProFamtableItemAdd", table.owner, [&](State&, Model& m) -> ProError {
    FamilyTableRecord* record = m.document->tableOf(m.row);
    if (!record) return ProGeneralError;
    if (item.type == ProFamitemType::unused || item.name.empty()) return ProBadInputs;
    const ProError result = headless::addColumn(*record, item.type, text::toUtf8(item.name));
    if (result == ProNoError) m.document->touch(m.row);
    return result;
  });
}

}  // namespace creo
