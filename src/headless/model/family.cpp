#include "headless/model/family.h"

#include <algorithm>
#include <unordered_set>

#include "headless/store/folder.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {

using creo::ProFamitemType;

namespace {

std::size_t columnAt(FamilyTableRecord& table, ProFamitemType type, std::string_view name) {
  const auto& columns = table.items.list;
  const auto nameAt = [&](std::size_t i) -> std::string_view { return columns[i].name; };
  const std::size_t first = table.items.index.find(name, columns.size(), nameAt);
  // Columns of other types may have the same name.
  for (std::size_t i = first; i < columns.size(); ++i)
    if (columns[i].type == type && sameName(columns[i].name, name)) return i;
  return NameIndex::kNone;
}

// A row's values stand in the columns' order as a rule, so a column's value is at its number or shortly before.
std::size_t valueAt(const RowRecord& row, std::size_t column, std::string_view name) {
  const auto& values = row.values;
  const std::size_t start = std::min(column + 1, values.size());
  for (std::size_t i = start; i-- > 0;)
    if (sameName(values[i].name, name)) return i;
  for (std::size_t i = start; i < values.size(); ++i)
    if (sameName(values[i].name, name)) return i;
  return NameIndex::kNone;
}

}  // namespace

const Scalar* rowValue(const ModelDocument& document, const RowRecord* row, ProFamitemType type,
                       std::string_view name) {
  for (; row; row = row->parent) {
    FamilyTableRecord* table = document.tableAbove(row);
    const std::size_t column = columnAt(*table, type, name);
    if (column == NameIndex::kNone) continue;
    const std::size_t value = valueAt(*row, column, name);
    if (value != NameIndex::kNone) return &row->values[value].value;
  }
  return nullptr;
}

namespace {

// Null: relations make nothing of it.
const Scalar* workedOut(const Model& model, const Scalar& stored) {
  if (!model.row) return nullptr;
  const auto& values = model.document->workedOut.instanceValues(model).values;
  const auto found = values.find(&stored);
  return found == values.end() ? nullptr : &found->second;
}

}  // namespace

const Scalar& heldValue(const Model& model, ProFamitemType type, std::string_view name, const Scalar& stored) {
  if (const Scalar* worked = workedOut(model, stored)) return *worked;
  const Scalar* own = rowValue(*model.document, model.row, type, name);
  return own ? *own : stored;
}

const Scalar& heldValue(const Model& model, const Scalar& stored) {
  const Scalar* worked = workedOut(model, stored);
  return worked ? *worked : stored;
}

void setRowValue(ModelDocument& document, RowRecord& row, ProFamitemType type, std::string_view name, Scalar value) {
  FamilyTableRecord& table = *document.tableAbove(&row);
  std::size_t column = columnAt(table, type, name);
  if (column == NameIndex::kNone) {
    addColumn(table, type, name);
    column = table.items.list.size() - 1;
  }
  const std::size_t at = valueAt(row, column, name);
  if (at != NameIndex::kNone)
    row.values[at].value = std::move(value);
  else
    row.values.push_back({table.items.list[column].name, std::move(value)});
}

bool hasColumn(const ModelDocument& document, const RowRecord* row, ProFamitemType type, std::string_view name) {
  for (; row; row = row->parent)
    if (columnAt(*document.tableAbove(row), type, name) != NameIndex::kNone) return true;
  return false;
}

creo::ProError addColumn(FamilyTableRecord& table, ProFamitemType type, std::string_view name) {
  if (columnAt(table, type, name) != NameIndex::kNone) return creo::ProExists;
  ColumnRecord& column = table.items.list.emplace_back();
  column.type = type;
  column.name = name;
  return creo::ProNoError;
}

RowColumn rowColumn(const ModelDocument& document, const RowRecord& row, ProFamitemType type, std::string_view name) {
  const std::size_t column = columnAt(*document.tableAbove(&row), type, name);
  if (column == NameIndex::kNone) return {};
  return {true, valueAt(row, column, name) != NameIndex::kNone};
}

RowRecord* decidingRow(const Model& instance, ProFamitemType type, std::string_view name) {
  RowRecord* row = instance.row;
  while (row && !rowColumn(*instance.document, *row, type, name).hasValue) row = row->parent;
  return row;
}

bool removeColumn(ModelDocument& document, FamilyTableRecord& table, ProFamitemType type, std::string_view name) {
  const std::size_t column = columnAt(table, type, name);
  if (column == NameIndex::kNone) return false;
  for (const auto& row : table.instances) {
    const std::size_t value = valueAt(*row, column, name);
    if (value == NameIndex::kNone) continue;
    row->values.erase(row->values.begin() + static_cast<std::ptrdiff_t>(value));
    document.touch(row.get());
  }
  table.items.list.erase(table.items.list.begin() + static_cast<std::ptrdiff_t>(column));
  table.items.index.drop();
  return true;
}

std::vector<TakenColumn> takeColumns(ModelDocument& document, ProFamitemType type, std::string_view name) {
  std::vector<TakenColumn> taken;
  if (!document.record.familyTable) return taken;
  const auto take = [&](FamilyTableRecord& table, std::string_view generic) {
    const std::size_t at = columnAt(table, type, name);
    if (at == NameIndex::kNone) return;
    TakenColumn& entry = taken.emplace_back();
    entry.generic = generic;
    entry.at = at;
    for (const auto& row : table.instances)
      if (const std::size_t value = valueAt(*row, at, name); value != NameIndex::kNone)
        entry.values.push_back({row->name, value, row->values[value].value});
    entry.column.type = type;
    entry.column.extra = std::move(table.items.list[at].extra);
    removeColumn(document, table, type, name);
  };
  take(*document.record.familyTable, {});
  eachRow(*document.record.familyTable, [&](RowRecord& row) {
    if (row.familyTable) take(*row.familyTable, row.name);
  });
  return taken;
}

void returnColumns(ModelDocument& document, const std::vector<TakenColumn>& taken, const std::string& name,
                   bool withValues) {
  const auto placed = [](auto& list, std::size_t at) {
    return list.begin() + static_cast<std::ptrdiff_t>(std::min(at, list.size()));
  };
  for (const TakenColumn& entry : taken) {
    RowRecord* generic = entry.generic.empty() ? nullptr : document.row(text::fromUtf8(entry.generic));
    FamilyTableRecord* table = entry.generic.empty() || generic ? document.tableOf(generic) : nullptr;
    if (!table || columnAt(*table, entry.column.type, name) != NameIndex::kNone) continue;
    auto& columns = table->items.list;
    ColumnRecord& column = *columns.emplace(placed(columns, entry.at));
    column.type = entry.column.type;
    column.name = name;
    if (entry.column.extra) column.extra = std::make_unique<Extra>(*entry.column.extra);
    table->items.index.drop();
    document.touch(generic);
    for (const TakenColumn::Value& value : entry.values) {
      RowRecord* row = withValues ? document.row(text::fromUtf8(value.row)) : nullptr;
      if (!row || document.tableAbove(row) != table) continue;
      row->values.insert(placed(row->values, value.at), {name, value.value});
      document.touch(row);
    }
  }
}

void removeColumn(ModelDocument& document, ProFamitemType type, std::string_view name) {
  takeColumns(document, type, name);
}

void renameColumn(ModelDocument& document, ProFamitemType type, std::string_view from, const std::string& to) {
  if (!document.record.familyTable) return;
  const auto inTable = [&](FamilyTableRecord& table) {
    const std::size_t column = columnAt(table, type, from);
    if (column == NameIndex::kNone) return;
    for (const auto& row : table.instances)
      if (const std::size_t value = valueAt(*row, column, from); value != NameIndex::kNone)
        row->values[value].name = to;
    table.items.list[column].name = to;
    table.items.index.drop();
  };
  inTable(*document.record.familyTable);
  eachRow(*document.record.familyTable, [&](RowRecord& row) {
    if (row.familyTable) inTable(*row.familyTable);
  });
}

std::optional<bool> yesOrNo(const Scalar& value) {
  if (const bool* there = std::get_if<bool>(&value)) return *there;
  const auto* word = std::get_if<std::string>(&value);
  if (word && sameName(*word, "Y")) return true;
  if (word && sameName(*word, "N")) return false;
  return {};
}

std::wstring genericName(const Model& model) {
  if (model.row->parent) return text::upper(text::fromUtf8(model.row->parent->name));
  return model.document->name;
}

std::optional<std::string> componentText(const Model& model, const UsedModelRecord& component) {
  const Scalar* value = rowValue(*model.document, model.row, ProFamitemType::component, component.name);
  if (!value) return component.name;
  const auto there = yesOrNo(*value);
  if (there && !*there) return {};
  const auto* other = std::get_if<std::string>(value);
  return other && !there ? *other : component.name;
}

std::vector<UsedModelRecord> replacedComponents(const Model& model) {
  std::vector<UsedModelRecord> replaced;
  for (const UsedModelRecord& component : model.document->record.components) {
    const auto text = componentText(model, component);
    if (!text || *text == component.name) continue;
    UsedModelRecord& entry = replaced.emplace_back();
    entry.name = *text;
    entry.type = component.type;
  }
  return replaced;
}

std::wstring componentOf(const Model& model, const UsedModelRecord& component) {
  const auto text = componentText(model, component);
  return text ? modelName(text::fromUtf8(*text)).name : std::wstring();
}

std::vector<creo::ProDependency> dependencies(const Model& model) {
  if (model.document->isAway()) return model.document->away().uses;
  const ModelRecord& record = model.document->record;
  std::vector<creo::ProDependency> out;
  std::unordered_set<std::wstring> seen;
  for (const UsedModelRecord& used : model.type() == creo::ProMdlType::drawing ? record.models : record.components) {
    const std::wstring name = componentOf(model, used);
    if (!name.empty() && seen.insert(modelKey(name, used.type)).second)
      out.push_back({name, creo::typeExtension(used.type), used.type});
  }
  return out;
}

}  // namespace headless
