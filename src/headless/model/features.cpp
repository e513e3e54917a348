#include "headless/model/features.h"

#include "headless/model/family.h"
#include "text/encoding.h"

namespace headless {

using creo::ProFeatureStatus;

namespace {

// An instance that leaves a component out has no such feature.
bool isThere(const ModelFeature& feature) {
  return !feature.isComponent() || !componentOf(*feature.model, *feature.component()).empty();
}

}  // namespace

FeatureRecord* ModelFeature::record() const {
  return place.record == TreeFeature::kNone ? nullptr : &model->document->record.features[place.record];
}

const UsedModelRecord* ModelFeature::component() const {
  return isComponent() ? &model->document->record.components[place.component] : nullptr;
}

std::vector<ModelFeature> featuresOf(const Model& model) {
  std::vector<ModelFeature> features;
  for (const TreeFeature& place : model.document->tree.all(model.document->record))
    if (const ModelFeature feature{&model, place}; isThere(feature)) features.push_back(feature);
  return features;
}

std::optional<ModelFeature> featureOf(const Model& model, int id) {
  const TreeFeature* place = model.document->tree.find(model.document->record, id);
  if (!place) return {};
  const ModelFeature feature{&model, *place};
  if (!isThere(feature)) return {};
  return feature;
}

void giveComponentsRecords(ModelDocument& document) {
  ModelRecord& record = document.record;
  for (const TreeFeature& place : std::vector<TreeFeature>(document.tree.all(record))) {
    if (place.record != TreeFeature::kNone) continue;
    record.components[place.component].feature = place.id;
    // The tree has these behind all others, in this order.
    FeatureRecord& added = record.features.emplace_back();
    added.id = place.id;
    added.type = creo::kComponentFeature;
    added.typeName = "COMPONENT";
  }
  document.tree.changed();
}

std::wstring featureName(const ModelFeature& feature) {
  if (const UsedModelRecord* component = feature.component()) return componentOf(*feature.model, *component);
  return text::fromUtf8(feature.record()->name);
}

std::wstring featureLabel(const ModelFeature& feature) {
  std::wstring name = featureName(feature);
  return name.empty() ? std::to_wstring(feature.place.id) : name;
}

int featureType(const ModelFeature& feature) {
  const FeatureRecord* record = feature.record();
  return record && !feature.isComponent() ? record->type : creo::kComponentFeature;
}

std::string featureColumn(const ModelFeature& feature) {
  const FeatureRecord* record = feature.record();
  return record && !record->name.empty() ? record->name : std::to_string(feature.place.id);
}

bool isSuppressed(ProFeatureStatus status) {
  return status >= ProFeatureStatus::familyTableSuppressed && status <= ProFeatureStatus::suppressed;
}

bool isInUse(ProFeatureStatus status) {
  return status == ProFeatureStatus::active || status == ProFeatureStatus::unregenerated;
}

ProFeatureStatus storedStatus(const ModelFeature& feature) {
  const FeatureRecord* record = feature.record();
  ProFeatureStatus own = record ? record->status : ProFeatureStatus::active;
  if (record && feature.model->row) {
    const auto& statuses = feature.model->document->workedOut.instanceValues(*feature.model).statuses;
    if (const auto found = statuses.find(record->id); found != statuses.end()) own = found->second;
  }
  const Scalar* value =
      rowValue(*feature.model->document, feature.model->row, creo::ProFamitemType::feature, featureColumn(feature));
  const auto kept = value ? yesOrNo(*value) : std::nullopt;
  if (!kept) return own;
  if (!*kept) return ProFeatureStatus::familyTableSuppressed;
  const bool suppressed = own == ProFeatureStatus::suppressed || own == ProFeatureStatus::familyTableSuppressed;
  return suppressed ? ProFeatureStatus::active : own;
}

ProFeatureStatus featureStatus(const ModelFeature& feature) {
  const ProFeatureStatus own = storedStatus(feature);
  const int place = feature.model->document->record.insertAfter;
  return place > 0 && feature.place.number > place && isInUse(own) ? ProFeatureStatus::inactive : own;
}

}  // namespace headless
