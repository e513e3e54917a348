#include "creo/ProSection.h"

#include "headless/creo/solid_operation.h"
#include "headless/model/features.h"
#include "text/format.h"

namespace creo {

using headless::Model;
using State = headless::Session::State;

namespace {

bool hasSketch(const Model& model, int feature, int number) {
  const auto found = headless::featureOf(model, feature);
  const headless::FeatureRecord* record = found ? found->record() : nullptr;
  return record && number >= 0 && static_cast<std::size_t>(number) < record->sections.size();
}

}  // namespace

Got<ProSection> ProFeatureSectionCopy(const ProFeature& feature, int number) {
  return headless::onSolid("ProFeatureSectionCopy", feature.owner, [&](State&, Model& m) -> Got<ProSection> {
    if (!hasSketch(m, feature.id, number)) return ProNotFound;
    return ProSection{feature, number};
  });
}

// Sketches have no names in documents: they are called as Creo calls new ones, each feature's from 1.
Got<std::wstring> ProSectionNameGet(const ProSection& section) {
  return headless::onSolid("ProSectionNameGet", section.feature.owner, [&](State&, Model& m) -> Got<std::wstring> {
    if (!hasSketch(m, section.feature.id, section.number)) return ProNotFound;
    return text::format(L"S2D%04d", section.number + 1);
  });
}

}  // namespace creo
