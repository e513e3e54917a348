// The place in a solid's tree where new features come.
#include <algorithm>

#include "creo/ProFeature.h"
#include "creo/ProSolid.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/features.h"
#include "headless/model/suppress.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

namespace {

// Do features follow the place?
bool isActive(const Model& model) {
  const int place = model.document->record.insertAfter;
  const auto features = headless::featuresOf(model);
  return place > 0 && std::any_of(features.begin(), features.end(), [place](const headless::ModelFeature& feature) {
           return feature.place.number > place;
         });
}

void setPlace(Model& model, int number) {
  int& place = model.document->record.insertAfter;
  if (place == number) return;
  place = number;
  model.document->touch(nullptr);
}

// Components without a record have no status to keep.
void suppressBehind(Model& model) {
  std::vector<int> behind;
  for (const headless::ModelFeature& feature : headless::featuresOf(model))
    if (feature.record() && headless::featureStatus(feature) == ProFeatureStatus::inactive)
      behind.push_back(feature.place.id);
  headless::suppress(model, behind, ProChildren::stay);
}

}  // namespace

Got<bool> ProInsertModeIsActive(ProMdl solid) {
  return onSolid("ProInsertModeIsActive", solid, [](State&, Model& m) -> Got<bool> { return isActive(m); });
}

ProError ProFeatureInsertModeActivate(const ProFeature& feature) {
  return onSolid("ProFeatureInsertModeActivate", feature.owner, [&](State&, Model& m) -> ProError {
    const auto found = headless::featureOf(m, feature.id);
    if (!found) return ProNotFound;
    const auto all = headless::featuresOf(m);
    const bool isLast = std::none_of(all.begin(), all.end(), [&](const headless::ModelFeature& entry) {
      return entry.place.number > found->place.number;
    });
    setPlace(m, isLast ? 0 : found->place.number);
    return ProNoError;
  });
}

// The document keeps the status that features behind the place come back with.
ProError ProInsertModeCancel(ProMdl solid, bool resume) {
  return onSolid("ProInsertModeCancel", solid, [&](State&, Model& m) -> ProError {
    if (!isActive(m)) return ProNotFound;
    if (!resume) suppressBehind(m);
    setPlace(m, 0);
    return ProNoError;
  });
}

}  // namespace creo
