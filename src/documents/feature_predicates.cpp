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

using core::Message;

constexpr std::wstring_view kFromTypeVersion = L"4";

// Does the test hold for a feature of the solid? The first one ends the visit.
template <class Test>
Answer anyFeature(creo::ProMdl solid, Test&& holds) {
  bool found = false;
  creo::ProSolidFeatVisit(solid, [&](const creo::ProFeature& feature) {
    found = holds(feature);
    return found ? creo::ProStopVisit : creo::ProNoError;
  });
  return answer(found);
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
  [[nodiscard]] bool numberIs(std::wstring_view attribute, int number) const {
    const std::wstring_view wanted = valueOf(item, attribute);
    return noted(L"=", wanted, number, text::parseInt(wanted) == number);
  }
  [[nodiscard]] bool typeHolds(const creo::ProFeature& feature) const {
    const auto stored = creo::ProFeatureTypeGet(feature);
    return stored && stored.value == type;
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

// The feature's name is the pattern and the attribute the text.
Answer featureExistsPredicate(const Question& question) {
  return anyFeature(question.model, [&](const creo::ProFeature& feature) {
    const auto name = creo::ProFeatureNameGet(feature);
    return name && matches(name.value, question.value(L"ke"));
  });
}

Answer featureSuppressedPredicate(const Question& question) {
  return anyFeature(question.model, [&](const creo::ProFeature& feature) {
    const auto name = creo::ProFeatureNameGet(feature);
    if (!name || !matches(question.value(L"ke"), name.value)) return false;
    const auto status = creo::ProFeatureStatusGet(feature);
    return status && status.value == creo::ProFeatureStatus::suppressed;
  });
}

Answer featureFromTypePredicate(const Question& question) {
  if (question.value(L"version") != kFromTypeVersion) {
    core::logWrite(L"Please Update the kvz to get a compatible version", core::kError);
    return Answer::notApplicable;
  }
  if (!applicableType(question.model, Models::solids)) return Answer::notApplicable;
  const bool byType = question.isTrue(L"feattypesel");
  const FeatureTests tests{question.item, byType ? core::featureTypeOf(L"feattype", question.value(L"feattype")) : 0};
  return anyFeature(question.model, [&tests](const creo::ProFeature& feature) { return tests.hold(feature); });
}

Answer geometryCheckPredicate(const Question& question) {
  return anyFeature(question.model, [](const creo::ProFeature& feature) {
    const auto checks = creo::ProFeatureHasGeomchks(feature);
    return checks && checks.value;
  });
}

Answer flexibleComponentPredicate(const Question& question) {
  return anyFeature(question.model, [&](const creo::ProFeature& feature) {
    const auto kind = creo::ProFeatureTypeGet(feature);
    if (!kind || kind.value != creo::kComponentFeature) return false;
    const auto component = creo::ProAsmcompMdlGet(feature);
    if (!component) return false;
    const auto name = creo::ProMdlNameGet(component.value);
    if (!name || !matches(question.value(L"ke"), name.value)) return false;
    const auto flexible = creo::ProAsmcompIsFlexible(feature);
    return flexible && flexible.value;
  });
}

// Its answer says nothing of the sketches; it is for the log's sake that lists hold it.
Answer sketchEntitiesPredicate(const Question& question) {
  creo::ProSolidFeatVisit(question.model, [](const creo::ProFeature& feature) {
    logSketch(feature);
    return creo::ProNoError;
  });
  return Answer::yes;
}

constexpr Attribute kExists[] = {
    {.name = L"ke", .need = Need::needed, .about = "the text that the name, taken as a pattern, fits"},
};
constexpr Attribute kName[] = {
    {.name = L"ke", .kind = Kind::pattern, .need = Need::needed, .about = "the name"},
};
constexpr Attribute kFromType[] = {
    {.name = L"version",
     .kind = Kind::word,
     .words = L"4",
     .need = Need::needed,
     .about = "another one makes the filter not applicable"},
    {.name = L"featnamesel", .kind = Kind::flag, .words = L"true", .about = "the name is tested"},
    {.name = L"featname", .kind = Kind::pattern, .about = "the name of the feature"},
    {.name = L"featnumsel", .kind = Kind::flag, .words = L"true", .about = "the number is tested"},
    {.name = L"featnum", .kind = Kind::integer, .about = "the number of the feature"},
    {.name = L"featidsel", .kind = Kind::flag, .words = L"true", .about = "the id is tested"},
    {.name = L"featid", .kind = Kind::integer, .about = "the id of the feature"},
    {.name = L"feattypesel", .kind = Kind::flag, .words = L"true", .about = "the type is tested"},
    {.name = L"feattype", .kind = Kind::feature, .about = "the type of the feature"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"keExists",
     .place = 14,
     .title = Message::filterFeatureExists,
     .models = Models::solids,
     .attributes = kExists,
     .about = "the name of a feature, taken as a pattern, fits a text",
     .function = &featureExistsPredicate},
    {.key = L"keSuppressed",
     .place = 17,
     .title = Message::filterFeatureSuppressed,
     .models = Models::solids,
     .attributes = kName,
     .about = "a feature whose name fits is suppressed",
     .function = &featureSuppressedPredicate},
    {.key = L"keFromType",
     .place = 22,
     .title = Message::filterFeatureType,
     .models = Models::solids,
     .asksTypeItself = true,
     .attributes = kFromType,
     .about = "a feature passes each test that is switched on",
     .function = &featureFromTypePredicate},
    {.key = L"geomchk",
     .place = 23,
     .title = Message::filterGeometryCheck,
     .models = Models::solids,
     .about = "a feature has geometry checks",
     .function = &geometryCheckPredicate},
    {.key = L"keIsFlexible",
     .place = 38,
     .title = L"Extended filter: Component is flexible",
     .models = Models::assemblies,
     .attributes = kName,
     .about = "the model of a flexible component has a name that fits",
     .function = &flexibleComponentPredicate},
    {.key = L"sketchhasentities",
     .place = 47,
     .title = L"Extended filter: Sketch has entities",
     .models = Models::solids,
     .about = "always; the sketches and their entities are written to the log",
     .function = &sketchEntitiesPredicate},
};

}  // namespace

std::span<const Predicate> featurePredicates() { return kPredicates; }

}  // namespace documents
