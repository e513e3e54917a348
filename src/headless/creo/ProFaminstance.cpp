#include "creo/ProFaminstance.h"

#include "headless/creo/operation.h"
#include "headless/model/family.h"
#include "headless/model/instances.h"
#include "headless/model/new_document.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/units.h"

namespace creo {

using headless::FamilyTableRecord;
using headless::Model;
using headless::onModel;
using headless::RowRecord;
using State = headless::Session::State;

namespace {

// Runs a body on a row of the model's own table: body(state, model, row).
template <class Body>
ProError onRow(std::string_view operation, const ProFaminstance& instance, Body body) {
  return onModel(operation, instance.owner, [&](State& state, Model& m) -> ProError {
    RowRecord* row = m.document->row(instance.name);
    if (!row || row->parent != m.row) return ProNotFound;
    return body(state, m, *row);
  });
}

// Null: the row and those below it are free.
const RowRecord* lockedIn(const RowRecord& row) {
  const RowRecord* locked = row.locked ? &row : nullptr;
  if (row.familyTable)
    headless::eachRow(*row.familyTable, [&](const RowRecord& record) { locked = record.locked ? &record : locked; });
  return locked;
}

}  // namespace

ProError ProFaminstanceLock(const ProFaminstance& instance, ProInstanceLock lock) {
  return onRow("ProFaminstanceLock", instance, [&](State&, Model& m, RowRecord& row) -> ProError {
    const bool wanted = lock == ProInstanceLock::locked;
    if (row.locked == wanted) return ProNoError;
    row.locked = wanted;
    m.document->touch(&row);
    return ProNoError;
  });
}

ProError ProFaminstanceRemove(const ProFaminstance& instance) {
  return onRow("ProFaminstanceRemove", instance, [](State& state, Model& m, RowRecord& row) -> ProError {
    if (const RowRecord* locked = lockedIn(row)) return headless::refuseLocked(state.models, *m.document, *locked);
    headless::removeRow(state.models, m.document, row);
    return ProNoError;
  });
}

ProError ProFaminstanceAdd(const ProFaminstance& instance) {
  return onModel("ProFaminstanceAdd", instance.owner, [&](State& state, Model& m) -> ProError {
    if (!m.document->tableOf(m.row)) return ProNotFound;
    if (instance.name.empty() || text::units(instance.name) > text::kLongestModelName) return ProBadInputs;
    if (m.document->row(instance.name) || state.models.inMemory(instance.name, m.type())) return ProExists;
    if (!m.document->returnRow(instance.name, m.row)) m.document->addRow(text::toUtf8(instance.name), m.row);
    return ProNoError;
  });
}

ProError ProFamtableErase(const ProFamtable& table) {
  return onModel("ProFamtableErase", table.owner, [](State& state, Model& m) -> ProError {
    FamilyTableRecord* present = m.document->tableOf(m.row);
    if (!present) return ProNotFound;
    for (const auto& row : present->instances)
      if (const RowRecord* locked = lockedIn(*row)) return headless::refuseLocked(state.models, *m.document, *locked);
    while (!present->instances.empty()) headless::removeRow(state.models, m.document, *present->instances.front());
    (m.row ? m.row->familyTable : m.document->record.familyTable).reset();
    m.document->touch(m.row);
    return ProNoError;
  });
}

}  // namespace creo
