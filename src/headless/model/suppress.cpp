#include "headless/model/suppress.h"

#include "headless/model/family.h"
#include "headless/model/features.h"

namespace headless {

using creo::ProFamitemType;
using creo::ProFeatureStatus;

namespace {

bool isSuppressed(ProFeatureStatus status) {
  return status == ProFeatureStatus::suppressed || status == ProFeatureStatus::familyTableSuppressed;
}

// The row whose value decides on a feature: the instance's, or one above it; null where none does.
RowRecord* decidingRow(const Model& solid, const std::string& column) {
  for (RowRecord* row = solid.row; row; row = row->parent)
    if (rowColumn(*solid.document, *row, ProFamitemType::feature, column).hasValue) return row;
  return nullptr;
}

void change(const Model& solid, const ModelFeature& feature, bool away) {
  if (isSuppressed(featureStatus(feature)) == away) return;
  ModelDocument& document = *solid.document;
  const std::string column = featureColumn(feature);
  RowRecord* row = decidingRow(solid, column);
  const Scalar* value = row ? rowValue(document, row, ProFamitemType::feature, column) : nullptr;
  if (value && yesOrNo(*value)) {
    // The word in the way that it is written there.
    Scalar word = std::holds_alternative<bool>(*value) ? Scalar(!away) : Scalar(std::string(away ? "N" : "Y"));
    setRowValue(document, *row, ProFamitemType::feature, column, std::move(word));
    document.touch(row);
    return;
  }
  feature.record()->status = away ? ProFeatureStatus::suppressed : ProFeatureStatus::active;
  document.touch(nullptr);
}

}  // namespace

creo::ProError suppress(Model& solid, const std::vector<int>& features, bool away) {
  std::vector<ModelFeature> found;
  for (const int id : features) {
    const auto feature = featureOf(solid, id);
    if (!feature) return creo::ProNotFound;
    if (!feature->record()) return creo::ProBadInputs;
    found.push_back(*feature);
  }
  for (const ModelFeature& feature : found) change(solid, feature, away);
  return creo::ProNoError;
}

}  // namespace headless
