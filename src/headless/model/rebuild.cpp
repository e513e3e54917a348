#include "headless/model/rebuild.h"

#include <cmath>

#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/model/parents.h"
#include "headless/model/placed.h"
#include "text/format.h"

namespace headless {

using creo::ProFamitemType;
using creo::ProFeatureStatus;

namespace {

// The number the other way round; nothing for one that isn't below 0.
std::optional<Scalar> turned(const Scalar& value) {
  if (const auto* real = std::get_if<double>(&value); real && *real < 0) return Scalar(-*real);
  if (const auto* integer = std::get_if<int>(&value); integer && *integer < 0) return Scalar(-*integer);
  return std::nullopt;
}

void settleRow(const Model& instance) {
  ModelDocument& document = *instance.document;
  for (const DimensionRecord& entry : document.record.dimensions) {
    if (entry.reference) continue;
    RowRecord* row = decidingRow(instance, ProFamitemType::dimension, symbolOf(entry));
    const Scalar* scalar = row ? rowValue(document, row, ProFamitemType::dimension, symbolOf(entry)) : nullptr;
    const auto positive = scalar ? turned(*scalar) : std::nullopt;
    if (!positive) continue;
    setRowValue(document, *row, ProFamitemType::dimension, symbolOf(entry), *positive);
    document.touch(row);
  }
}

double numberOf(const Scalar& value) {
  if (const auto* integer = std::get_if<int>(&value)) return *integer;
  const auto* real = std::get_if<double>(&value);
  return real ? *real : 0;
}

}  // namespace

void settleDimensions(const Model& model) {
  if (model.row) return settleRow(model);
  ModelDocument& document = *model.document;
  for (DimensionRecord& dimension : document.record.dimensions) {
    const auto positive = dimension.reference ? std::nullopt : turned(dimension.value);
    if (!positive) continue;
    dimension.value = *positive;
    dimension.flipped = !dimension.flipped;
    document.touch(nullptr);
  }
}

void settleSections(const Model& model) {
  if (model.row) return;
  ModelDocument& document = *model.document;
  for (CrossSectionRecord& section : document.record.crossSections) {
    const DimensionRecord* dimension = section.dimension == 0 ? nullptr : document.dimension(section.dimension, false);
    if (!dimension) continue;
    const double distance = numberOf(dimension->value) * (dimension->flipped ? -1 : 1);
    if (section.distance == distance) continue;
    section.distance = distance;
    document.touch(nullptr);
  }
}

std::wstring featureFault(const Model& model, std::vector<RegeneratedFeature>* worked) {
  for (const ModelFeature& feature : featuresOf(model)) {
    const ProFeatureStatus status = featureStatus(feature);
    if (!isInUse(status)) continue;
    const std::wstring fault =
        status == ProFeatureStatus::unregenerated ? L"isn't regenerated" : lostReference(feature);
    if (!fault.empty()) return text::format(L"the feature %s %s", featureLabel(feature), fault);
    if (worked) worked->push_back({model.handle, feature.place.id, featureName(feature)});
  }
  return {};
}

std::wstring missingComponent(const Models& models, const Model& assembly) {
  if (assembly.document->record.components.empty()) return {};
  const LeftOut leftOut(assembly);
  for (const ModelFeature& feature : featuresOf(assembly)) {
    if (!feature.isComponent() || leftOut.has(feature.place.id) || !isInUse(featureStatus(feature))) continue;
    const std::wstring name = featureName(feature);
    const creo::ProMdlType type = feature.component()->type;
    if (!models.inMemory(name, type)) return name + L'.' + creo::typeExtension(type);
  }
  return {};
}

}  // namespace headless
