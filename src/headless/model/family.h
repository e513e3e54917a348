// What rows of family tables mean for the models they stand for.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// The value that a row, or else a row above it, gives a column; null: the generic's own value holds.
const Scalar* rowValue(const ModelDocument& document, const RowRecord* row, creo::ProFamitemType type,
                       std::string_view name);
// What a model has where the document stores a value: of an instance what its generic's relations make of it, else the
// value of its row, or of a row above it, in the column of that name. Of anything else, and where neither says
// something, it is the stored one.
const Scalar& heldValue(const Model& model, creo::ProFamitemType type, std::string_view name, const Scalar& stored);
// The same of what no column stands for, such as a feature's parameter.
const Scalar& heldValue(const Model& model, const Scalar& stored);
// Gives the row a value, adding the column to its table where there is none.
void setRowValue(ModelDocument& document, RowRecord& row, creo::ProFamitemType type, std::string_view name,
                 Scalar value);
// Does the table that the row hangs in, or one above it, have the column?
bool hasColumn(const ModelDocument& document, const RowRecord* row, creo::ProFamitemType type, std::string_view name);
// ProExists: the column is there.
creo::ProError addColumn(FamilyTableRecord& table, creo::ProFamitemType type, std::string_view name);
// Is there such a column in the table that lists the row, and has the row a value of its own in it?
struct RowColumn {
  bool isColumn = false, hasValue = false;
};
RowColumn rowColumn(const ModelDocument& document, const RowRecord& row, creo::ProFamitemType type,
                    std::string_view name);
// The row whose own value decides for an instance: its row, or one above it. Null: the generic's own value holds.
RowRecord* decidingRow(const Model& instance, creo::ProFamitemType type, std::string_view name);
// Takes a column away with all values in it: of one table (false: it isn't there), or of all.
bool removeColumn(ModelDocument& document, FamilyTableRecord& table, creo::ProFamitemType type, std::string_view name);
void removeColumn(ModelDocument& document, creo::ProFamitemType type, std::string_view name);

// A column that was taken away, with the values in it; rows by their names.
struct TakenColumn {
  std::string generic;  // whose table it was; empty: the document's own
  std::size_t at = 0;   // its place in it
  ColumnRecord column;
  struct Value {
    std::string row;
    std::size_t at = 0;  // its place among the row's values
    Scalar value;
  };
  std::vector<Value> values;
};
// Takes a column away from all tables.
std::vector<TakenColumn> takeColumns(ModelDocument& document, creo::ProFamitemType type, std::string_view name);
// Puts columns back at their places, under that name; withValues: as they were, else no row has a value in them.
// Tables and rows that have gone meanwhile are passed over, and tables that have such a column.
void returnColumns(ModelDocument& document, const std::vector<TakenColumn>& taken, const std::string& name,
                   bool withValues);

// What the columns of a type stand for has another name now; in all tables.
void renameColumn(ModelDocument& document, creo::ProFamitemType type, std::string_view from, const std::string& to);

// What a column of features or components says: true or "Y", false or "N". Nothing for any other value.
std::optional<bool> yesOrNo(const Scalar& value);

// The immediate generic's name, in upper case. model is an instance.
std::wstring genericName(const Model& model);
// The models that stand in components' places because the instance's row says so, as the row names them.
std::vector<UsedModelRecord> replacedComponents(const Model& model);
// What stands in a component's place as document or row write it; nothing where the instance leaves it out.
std::optional<std::string> componentText(const Model& model, const UsedModelRecord& component);
// The name of the model in a component's place, in upper case; empty where the instance leaves the component out.
std::wstring componentOf(const Model& model, const UsedModelRecord& component);
// The models that a model uses, each once, in the document's order; an instance leaves out or replaces components by
// its row.
std::vector<creo::ProDependency> dependencies(const Model& model);

}  // namespace headless
