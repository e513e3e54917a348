// The features of a model, as a plain model or an instance has them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "headless/model/model.h"

namespace headless {

// A feature of the document, a component of an assembly, or both.
struct ModelFeature {
  const Model* model = nullptr;
  TreeFeature place;
  [[nodiscard]] bool isComponent() const { return place.component != TreeFeature::kNone; }
  // Null for a component that has no record among the features.
  [[nodiscard]] FeatureRecord* record() const;
  // Null for a feature that is no component.
  [[nodiscard]] const UsedModelRecord* component() const;
};

// In the order of the tree; an instance's without the components that it leaves out.
std::vector<ModelFeature> featuresOf(const Model& model);
std::optional<ModelFeature> featureOf(const Model& model, int id);

// Gives each component of an assembly a record among the features, so that it can own things. Ids and numbers stay.
void giveComponentsRecords(ModelDocument& document);

// A component's is its model's. Empty: it has none.
std::wstring featureName(const ModelFeature& feature);
// Its name, or its id where it has none: how messages call it.
std::wstring featureLabel(const ModelFeature& feature);
int featureType(const ModelFeature& feature);
// Columns of family tables name a feature by its name, one without a name by its id.
std::string featureColumn(const ModelFeature& feature);
// A column of the family table suppresses a feature in an instance, or brings it back. Behind the place of insert mode
// it is inactive.
creo::ProFeatureStatus featureStatus(const ModelFeature& feature);
// The same without insert mode: the one that it comes back with.
creo::ProFeatureStatus storedStatus(const ModelFeature& feature);
// Suppressed in whatever way; one that is only behind the place of insert mode isn't.
bool isSuppressed(creo::ProFeatureStatus status);
// Is it in the regeneration: neither suppressed nor inactive?
bool isInUse(creo::ProFeatureStatus status);

}  // namespace headless
