#include "headless/model/stand_alone.h"

#include <unordered_set>

#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "headless/model/new_document.h"
#include "headless/model/parameters.h"
#include "headless/model/regenerate.h"
#include "headless/model/remove_feature.h"
#include "text/encoding.h"

namespace headless {

using creo::ProFamitemType;
using creo::ProFeatureStatus;

namespace {

// The document without its family table, however many rows that has.
ModelRecord copyWithoutTable(ModelRecord& record) {
  struct Lent {
    ModelRecord& record;
    std::unique_ptr<FamilyTableRecord> table = std::move(record.familyTable);
    ~Lent() { record.familyTable = std::move(table); }
  } const lent{record};
  return copyOf(record);
}

// What a row has of its own beside values, lent to a record for as long as it is copied. table: with its table.
class LentRow {
 public:
  LentRow(RowRecord& row, bool table) : row_(row), table_(table) { swap(); }
  ~LentRow() { swap(); }
  LentRow(const LentRow&) = delete;
  LentRow& operator=(const LentRow&) = delete;
  [[nodiscard]] ModelRecord copy() const { return copyOf(lent_); }

 private:
  void swap() {
    if (row_.parameters) std::swap(lent_.parameters, *row_.parameters);
    if (row_.externalData) std::swap(lent_.externalData, *row_.externalData);
    if (table_) lent_.familyTable.swap(row_.familyTable);
  }
  RowRecord& row_;
  bool table_;
  ModelRecord lent_;
};

// The model's parameters, then those that rows have of their own, from the outermost in: as a copy has them.
std::vector<const ParameterRecord*> parametersOf(const ModelRecord& record, const RowRecord* row) {
  std::vector<const ParameterRecord*> all;
  if (row) {
    all = parametersOf(record, row->parent);
    if (row->parameters)
      for (const ParameterRecord& entry : row->parameters->list) all.push_back(&entry);
  } else {
    for (const ParameterRecord& item : record.parameters.list) all.push_back(&item);
  }
  return all;
}

void resolveParameters(const Model& instance, ModelRecord& record) {
  const auto originals = parametersOf(instance.document->record, instance.row);
  for (std::size_t i = 0; i < originals.size(); ++i) {
    ParameterRecord& entry = record.parameters.list[i];
    const Scalar& value = heldValue(instance, ProFamitemType::parameter, entry.name, originals[i]->value);
    if (fitsType(value, entry.type)) entry.value = value;
  }
  for (std::size_t i = 0; i < record.features.size(); ++i) {
    const FeatureRecord& original = instance.document->record.features[i];
    for (std::size_t j = 0; original.parameters && j < original.parameters->list.size(); ++j)
      record.features[i].parameters->list[j].value = heldValue(instance, original.parameters->list[j].value);
  }
}

void resolveDimensions(const Model& instance, ModelRecord& record) {
  for (std::size_t i = 0; i < record.dimensions.size(); ++i) {
    DimensionRecord& entry = record.dimensions[i];
    const Scalar& stored = instance.document->record.dimensions[i].value;
    const Scalar& value = heldValue(instance, ProFamitemType::dimension, symbolOf(entry), stored);
    if (std::holds_alternative<double>(value) || std::holds_alternative<int>(value)) entry.value = value;
  }
}

// A feature that the row suppresses is one that somebody suppressed; a component that it leaves out was never there.
void resolveFeatures(const Model& instance, ModelRecord& record) {
  std::unordered_set<int> gone;
  const std::vector<TreeFeature>& tree = instance.document->tree.all(instance.document->record);
  for (const TreeFeature& place : tree) {
    const ModelFeature feature{&instance, place};
    if (feature.isComponent() && componentOf(instance, *feature.component()).empty()) {
      gone.insert(place.id);
      continue;
    }
    if (!feature.record()) continue;
    const ProFeatureStatus status = storedStatus(feature);
    record.features[place.record].status =
        status == ProFeatureStatus::familyTableSuppressed ? ProFeatureStatus::suppressed : status;
  }
  if (gone.empty()) return;
  // An id that a component got by its place is written down, as the places change.
  for (const TreeFeature& place : tree)
    if (place.component != TreeFeature::kNone) record.components[place.component].feature = place.id;
  std::erase_if(record.features, [&](const FeatureRecord& entry) { return gone.contains(entry.id); });
  // Their dimensions stay: relations may read them.
  dropReferences(record, gone, {});
}

void resolveComponents(const Model& instance, ModelRecord& record) {
  std::vector<UsedModelRecord> kept;
  for (UsedModelRecord& component : record.components) {
    auto text = componentText(instance, component);
    if (!text) continue;
    component.name = std::move(*text);
    kept.push_back(std::move(component));
  }
  record.components = std::move(kept);
}

// The parameters that rows have of their own, from the outermost in, then the instance's external data and its table.
void takeOwn(RowRecord& row, bool innermost, bool table, ModelRecord& record) {
  if (row.parent) takeOwn(*row.parent, false, false, record);
  ModelRecord own = LentRow(row, innermost && table).copy();
  for (ParameterRecord& entry : own.parameters.list) record.parameters.list.push_back(std::move(entry));
  if (!innermost) return;
  addUnknownMembers(record, row);
  record.externalData = std::move(own.externalData);
  record.familyTable = std::move(own.familyTable);
}

}  // namespace

std::shared_ptr<ModelDocument> standAlone(const Model& model, std::wstring_view name, bool table) {
  ModelRecord& source = model.document->record;
  auto document = newDocument(name, model.type());
  ModelRecord& record = document->record;
  record = table && !model.row ? copyOf(source) : copyWithoutTable(source);
  record.readOnly = false;
  if (model.row) {
    takeOwn(*model.row, true, table, record);
    record.commonName.clear();
    record.regeneration = regenerationStatus(model);
    record.material = text::toUtf8(currentMaterial(model));
    resolveParameters(model, record);
    resolveDimensions(model, record);
    resolveFeatures(model, record);
    resolveComponents(model, record);
  }
  if (record.familyTable) linkRows(*record.familyTable, nullptr);
  return document;
}

}  // namespace headless
