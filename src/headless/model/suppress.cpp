#include "headless/model/suppress.h"

#include <algorithm>

#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/model/models.h"
#include "headless/model/parents.h"
#include "text/format.h"

namespace headless {

using creo::ProFamitemType;
using creo::ProFeatureStatus;

namespace {

// By a person or a row; what a program or a representation suppresses comes back with them alone.
bool isPutAway(ProFeatureStatus status) {
  return status == ProFeatureStatus::suppressed || status == ProFeatureStatus::familyTableSuppressed;
}

void change(const Model& solid, const ModelFeature& feature, bool away) {
  if (isPutAway(storedStatus(feature)) == away) return;
  ModelDocument& document = *solid.document;
  const std::string column = featureColumn(feature);
  RowRecord* row = decidingRow(solid, ProFamitemType::feature, column);
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

namespace {

using Found = std::vector<ModelFeature>;

creo::ProError find(const Model& solid, const std::vector<int>& features, Found& found) {
  for (const int id : features) {
    const auto feature = featureOf(solid, id);
    if (!feature) return creo::ProNotFound;
    if (!feature->record()) return creo::ProBadInputs;
    found.push_back(*feature);
  }
  return creo::ProNoError;
}

// What stands in the way of the feature's coming back, such as "isn't suppressed"; empty: nothing. with: those that
// come back; suppressed parents are put to them where they may come too.
std::wstring hindrance(const ModelFeature& feature, creo::ProParents parents, std::vector<int>& with) {
  if (!isPutAway(storedStatus(feature))) return L"isn't suppressed";
  for (const int id : feature.record()->parents) {
    const auto parent = featureOf(*feature.model, id);
    if (!parent || !isSuppressed(storedStatus(*parent)) || std::ranges::find(with, id) != with.end()) continue;
    if (parents == creo::ProParents::mustBeThere || !isPutAway(storedStatus(*parent)))
      return L"refers to the feature " + featureLabel(*parent) + L", which is suppressed";
    with.push_back(id);
  }
  return {};
}

}  // namespace

creo::ProError suppress(Model& solid, const std::vector<int>& features, creo::ProChildren children) {
  Found found;
  const bool goAlong = children == creo::ProChildren::goAlong;
  if (const auto error = find(solid, goAlong ? withChildren(solid, features) : features, found)) return error;
  for (const ModelFeature& feature : found) {
    // A child that isn't there for another reason keeps that one, as one that failed does: resumed it would be active.
    const bool isAsked = std::ranges::find(features, feature.place.id) != features.end();
    if (isAsked || storedStatus(feature) == ProFeatureStatus::active) change(solid, feature, true);
  }
  return creo::ProNoError;
}

creo::ProError resume(const Models& models, Model& solid, const std::vector<int>& features, creo::ProParents parents) {
  Found found;
  if (const auto error = find(solid, features, found)) return error;
  std::vector<int> all = features;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const ModelFeature feature = *featureOf(solid, all[i]);
    const std::wstring why = feature.record() ? hindrance(feature, parents, all) : std::wstring();
    if (why.empty()) continue;
    models.message(text::format(L"%s.%s: the feature %s can't be resumed: it %s", solid.name,
                                std::wstring(creo::typeExtension(solid.type())), featureLabel(feature), why));
    return creo::ProGeneralError;
  }
  for (const int id : all)
    if (const auto feature = featureOf(solid, id); feature->record()) change(solid, *feature, false);
  return creo::ProNoError;
}

}  // namespace headless
