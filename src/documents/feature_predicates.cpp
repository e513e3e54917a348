// Predicates on the features of solids, an assembly's components among them.
#include "core/feature_codes.h"
#include "core/log.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "text/format.h"
#include "text/numbers.h"

namespace documents {
namespace {

constexpr int kTitleSuppressed = 27, kTitleExists = 28, kTitleFromType = 29, kTitleGeometryCheck = 45;
constexpr std::wstring_view kFromTypeVersion = L"4";

// Does the test hold for a feature of the solid? The first one ends the visit.
template <class Test>
int anyFeature(creo::ProMdl solid, Test&& holds) {
  bool held = false;
  creo::ProSolidFeatVisit(solid, [&](const creo::ProFeature& feature) {
    held = holds(feature);
    return held ? creo::ProStopVisit : creo::ProNoError;
  });
  return held ? kTrue : kFalse;
}

// What keFromType asks of a feature; a test that isn't enabled always holds.
struct FeatureTests {
  const core::XmlNode& item;
  int type = 0;

  [[nodiscard]] bool hold(const creo::ProFeature& feature) const {
    return (!isTrue(item, L"featnamesel") || nameHolds(feature)) &&
           (!isTrue(item, L"featnumsel") || numberHolds(feature)) &&
           (!isTrue(item, L"featidsel") || numberIs(L"featid", feature.id)) &&
           (!isTrue(item, L"feattypesel") || typeHolds(feature));
  }

 private:
  [[nodiscard]] bool nameHolds(const creo::ProFeature& feature) const {
    const auto name = creo::ProFeatureNameGet(feature);
    return name && matches(valueOf(item, L"featname"), name.value);
  }
  [[nodiscard]] bool numberHolds(const creo::ProFeature& feature) const {
    const auto number = creo::ProFeatureNumberGet(feature);
    return number && numberIs(L"featnum", number.value);
  }
  [[nodiscard]] bool numberIs(std::wstring_view attribute, int held) const {
    const std::wstring_view wanted = valueOf(item, attribute);
    return noted(L"=", wanted, held, text::parseInt(wanted) == held);
  }
  [[nodiscard]] bool typeHolds(const creo::ProFeature& feature) const {
    const auto held = creo::ProFeatureTypeGet(feature);
    return held && held.value == type;
  }
};

// The lines of a feature's sketches: how many it has, and what the first one is made of.
void logSketch(const creo::ProFeature& feature) {
  const auto sections = creo::ProFeatureNumSectionsGet(feature);
  if (!sections || sections.value <= 0) return;
  core::logWrite(text::format(L"%d - %s - %s - %d", feature.id, creo::ProFeatureTypenameGet(feature).value,
                              creo::ProFeatureSubtypeGet(feature).value, sections.value),
                 core::kError);
  for (const creo::ProSectionEntity& entity : creo::ProFeatureSectionEntitiesGet(feature, 0).value)
    core::logWrite(text::format(L"%d - %d", entity.id, entity.type), core::kError);
}

}  // namespace

// The feature's name is the pattern and the attribute the text.
int featureExistsPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleExists);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  return anyFeature(model, [&](const creo::ProFeature& feature) {
    const auto name = creo::ProFeatureNameGet(feature);
    return name && matches(name.value, valueOf(item, L"ke"));
  });
}

int featureSuppressedPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleSuppressed);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  return anyFeature(model, [&](const creo::ProFeature& feature) {
    const auto name = creo::ProFeatureNameGet(feature);
    if (!name || !matches(valueOf(item, L"ke"), name.value)) return false;
    const auto status = creo::ProFeatureStatusGet(feature);
    return status && status.value == creo::ProFeatureStatus::suppressed;
  });
}

int featureFromTypePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleFromType);
  if (valueOf(item, L"version") != kFromTypeVersion) {
    core::logWrite(L"Please Update the kvz to get a compatible version", core::kError);
    return kNotApplicable;
  }
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  const bool byType = isTrue(item, L"feattypesel");
  const FeatureTests tests{item, byType ? core::featureTypeOf(L"feattype", valueOf(item, L"feattype")) : 0};
  return anyFeature(model, [&tests](const creo::ProFeature& feature) { return tests.hold(feature); });
}

int geometryCheckPredicate(creo::ProMdl model, const core::XmlNode&) {
  title(kTitleGeometryCheck);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  return anyFeature(model, [](const creo::ProFeature& feature) {
    const auto checks = creo::ProFeatureHasGeomchks(feature);
    return checks && checks.value;
  });
}

int flexibleComponentPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Component is flexible");
  const auto type = applicableType(model, AppliesTo::solids);
  if (!type || *type != creo::ProMdlType::assembly) return kNotApplicable;
  return anyFeature(model, [&](const creo::ProFeature& feature) {
    const auto kind = creo::ProFeatureTypeGet(feature);
    if (!kind || kind.value != creo::kComponentFeature) return false;
    const auto component = creo::ProAsmcompMdlGet(feature);
    if (!component) return false;
    const auto name = creo::ProMdlNameGet(component.value);
    if (!name || !matches(valueOf(item, L"ke"), name.value)) return false;
    const auto flexible = creo::ProAsmcompIsFlexible(feature);
    return flexible && flexible.value;
  });
}

// Its answer says nothing of the sketches; it is for the log's sake that lists hold it.
int sketchEntitiesPredicate(creo::ProMdl model, const core::XmlNode&) {
  title(L"Extended filter: Sketch has entities");
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  creo::ProSolidFeatVisit(model, [](const creo::ProFeature& feature) {
    logSketch(feature);
    return creo::ProNoError;
  });
  return kTrue;
}

}  // namespace documents
