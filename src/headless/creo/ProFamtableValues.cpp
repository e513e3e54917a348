// Columns of family tables and the values of their rows.
#include "creo/ProFamtable.h"
#include "headless/creo/operation.h"
#include "headless/model/family.h"
#include "headless/model/parameters.h"
#include "text/encoding.h"

namespace creo {

using headless::FamilyTableRecord;
using headless::Model;
using headless::onModel;
using headless::RowRecord;
using State = headless::Session::State;

namespace {

// Runs a body where a row has a parameter column: body(state, document, row, name, column).
template <class Result, class Body>
Result onColumn(std::string_view operation, const ProFaminstance& instance, const ProFamtableItem& item, Body body) {
  return onModel(operation, instance.owner, [&](State& state, Model& m) -> Result {
    RowRecord* row = m.document->row(instance.name);
    if (!row || row->parent != m.row || item.type != ProFamitemType::parameter) return ProNotFound;
    const std::string name = text::toUtf8(item.name);
    const headless::RowColumn column = headless::rowColumn(*m.document, *row, item.type, name);
    if (!column.isColumn) return ProNotFound;
    return body(state, m.document, *row, name, column);
  });
}

}  // namespace

ProError ProFamtableItemVisit(const ProFamtable& table, Visitor<ProFamtableItem> visitor) {
  return onModel("ProFamtableItemVisit", table.owner, [&](State&, Model& m) -> ProError {
    std::vector<ProFamtableItem> items;
    if (const FamilyTableRecord* record = m.document->tableOf(m.row))
      for (const auto& column : record->items.list) items.push_back({column.type, text::fromUtf8(column.name)});
    return headless::visit<ProFamtableItem>(items, visitor);
  });
}

ProError ProFamtableItemRemove(const ProFamtable& table, const ProFamtableItem& item) {
  return onModel("ProFamtableItemRemove", table.owner, [&](State&, Model& m) -> ProError {
    FamilyTableRecord* record = m.document->tableOf(m.row);
    if (!record) return ProBadInputs;
    if (!headless::removeColumn(*m.document, *record, item.type, text::toUtf8(item.name))) return ProNotFound;
    m.document->touch(m.row);
    return ProNoError;
  });
}

Got<ProParamvalue> ProFaminstanceValueGet(const ProFaminstance& instance, const ProFamtableItem& item) {
  return onColumn<Got<ProParamvalue>>("ProFaminstanceValueGet", instance, item,
                                      [](State&, const auto& document, RowRecord& row, const std::string& name,
                                         const auto&) { return headless::parameterOfRow(document, row, name); });
}

ProError ProFaminstanceValueSet(const ProFaminstance& instance, const ProFamtableItem& item,
                                const ProParamvalue& value) {
  return onColumn<ProError>("ProFaminstanceValueSet", instance, item,
                            [&](State& state, auto& document, RowRecord& row, const std::string& name, const auto&) {
                              if (row.locked) return headless::refuseLocked(state.models, *document, row);
                              return headless::setParameterOfRow(*document, row, name, value);
                            });
}

Got<bool> ProFaminstanceFamtableItemIsDefault(const ProFaminstance& instance, const ProFamtableItem& item) {
  return onColumn<Got<bool>>("ProFaminstanceFamtableItemIsDefault", instance, item,
                             [](State&, const auto&, const RowRecord&, const std::string&,
                                const headless::RowColumn& column) { return Got<bool>(!column.hasValue); });
}

}  // namespace creo
