// The place in a solid's tree where new features come.
#include "actions/task.h"
#include "actions/visits.h"
#include "core/feature_codes.h"
#include "core/log.h"
#include "creo/ProDrawingView.h"
#include "creo/ProFeature.h"
#include "creo/ProSolid.h"
#include "language/compare.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;

// wantedType: of the features that are looked for by their type.
bool isWanted(const Task& task, int wantedType, const creo::ProFeature& feature, std::wstring_view name) {
  const std::wstring_view how = task.attribute(L"feat");
  if (how == L"1") {
    const auto type = creo::ProFeatureTypeGet(feature);
    return type && type.value == wantedType;
  }
  if (how == L"2") return feature.id == text::wholeInt(task.attribute(L"featid"));
  if (how == L"3") {
    const auto number = creo::ProFeatureNumberGet(feature);
    return number && number.value == text::wholeInt(task.attribute(L"featnum"));
  }
  return how == L"4" && matches(task.attribute(L"featname"), name);
}

Outcome setInsertFeaturePosition(const Task& task) {
  const bool byType = task.attribute(L"feat") == L"1";
  const int type = byType ? core::featureTypeOf(L"feattype", task.attribute(L"feattype")) : 0;
  const creo::ProError visited = creo::ProSolidFeatVisit(task.model(), [&](const creo::ProFeature& feature) {
    const std::wstring name = nameOrNone(creo::ProFeatureNameGet(feature), L"The name of a feature");
    if (!isWanted(task, type, feature, name)) return creo::ProNoError;
    core::logIndented(text::format(L"after feature: %d %s", feature.id, name), core::kNormal, 1);
    if (creo::ProFeatureInsertModeActivate(feature) != creo::ProNoError)
      core::logWrite(L"The insert position can't be set", core::kError);
    creo::ProTreetoolRefresh(task.model());
    return creo::ProStopVisit;
  });
  if (visited != creo::ProStopVisit) core::logWrite(L"Declared feature can't be found", core::kError);
  return done;
}

Outcome cancelFeaturePosition(const Task& task) {
  if (!creo::ProInsertModeIsActive(task.model()).value) {
    core::logIndented(L"Insert mode is not active", core::kNormal, 1);
    return done;
  }
  core::logIndented(L"Insert mode is active and get canceled", core::kNormal, 1);
  if (creo::ProInsertModeCancel(task.model(), true) == creo::ProNoError) {
    core::logIndented(L"Insert mode is canceled", core::kNormal, 1);
    creo::ProTreetoolRefresh(task.model());
  } else {
    core::logWrite(L"Failure while cancel insert mode", core::kError);
  }
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"feat",
     .kind = Kind::word,
     .words = L"1|2|3|4",
     .need = Need::needed,
     .about = "which feature: 1 one of feattype, 2 that with featid, 3 that with featnum, 4 one that fits featname"},
    {.name = L"feattype", .kind = Kind::feature, .about = "a code of a feature type"},
    {.name = L"featid", .kind = Kind::integer, .about = "an id"},
    {.name = L"featnum", .kind = Kind::integer, .about = "a number in the tree, from 1"},
    {.name = L"featname", .kind = Kind::pattern, .about = "a feature's name"},
};
constexpr Effects kEffects{.changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"setInsertFeaturePosition",
     .place = 34,
     .group = Group::modelNeeded,
     .title = L"Set insert feature position",
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "puts the place of new features behind the first that fits",
     .function = &setInsertFeaturePosition},
    {.key = L"cancelFeaturePosition",
     .place = 35,
     .group = Group::modelNeeded,
     .title = L"Cancel feature position",
     .effects = kEffects,
     .about = "ends insert mode: new features come at the end of the tree",
     .function = &cancelFeaturePosition},
};

}  // namespace

std::span<const Action> insertPositionActions() { return kActions; }

}  // namespace actions
