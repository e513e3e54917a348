// Actions that name, make, suppress and resume features.
#include <algorithm>
#include <set>

#include "actions/model/feature_choice.h"
#include "actions/visits.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "creo/ProDatum.h"
#include "creo/ProFeatureEdit.h"
#include "creo/ProModelitem.h"
#include "creo/ProSurface.h"
#include "creo/ProXsec.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace actions {
namespace {

// ---- names

struct NamedFeature {
  creo::ProFeature feature;
  std::wstring name;
};

void rename(const NamedFeature& entry, const std::wstring& name) {
  const creo::ProModelitem item{creo::ProItemType::feature, entry.feature.id, entry.feature.owner, {}};
  const std::wstring was = entry.name.empty() ? creo::ProModelitemDefaultnameGet(item).value : entry.name;
  switch (creo::ProModelitemNameSet(item, name)) {
    case creo::ProNoError:
      core::logIndented(text::format(L"%s -> %s", was, name), core::kNormal, 1);
      break;
    case creo::ProExists:
      core::logWrite(text::format(L"'%s' can't become '%s', another feature has that name", was, name), core::kError);
      break;
    default:
      core::logWrite(text::format(L"'%s' can't become '%s'", was, name), core::kError);
  }
}

constexpr std::wstring_view kFeatures = L"The features";
constexpr std::wstring_view kFeatureType = L"The type of a feature";

// Names of the form NAME_1, NAME_2, ..., which several features take. Those that have one already keep it, so that
// another run changes nothing.
class NumberedNames {
 public:
  NumberedNames(creo::ProMdl solid, std::wstring stem) : stem_(std::move(stem)) {
    const creo::ProError visited = creo::ProSolidFeatVisit(solid, [&](const creo::ProFeature& feature) {
      if (const auto name = creo::ProFeatureNameGet(feature)) taken_.insert(text::upper(name.value));
      return creo::ProNoError;
    });
    isKnown_ = isWhole(visited, kFeatures);
  }
  // False, with its line: which names are free isn't known.
  [[nodiscard]] bool isKnown() const { return isKnown_; }
  [[nodiscard]] bool isOne(const std::wstring& name) const {
    const std::wstring_view digits = std::wstring_view(name).substr(std::min(name.size(), stem_.size()));
    return digits.size() > 1 && text::equalNoCase(name.substr(0, stem_.size()), stem_) && digits[0] == L'_' &&
           digits.find_first_not_of(L"0123456789", 1) == digits.npos;
  }
  std::wstring next() {
    std::wstring name;
    do name = text::format(L"%s_%d", stem_, ++last_);
    while (taken_.contains(text::upper(name)));
    return name;
  }

 private:
  std::wstring stem_;
  std::set<std::wstring> taken_;
  bool isKnown_ = false;
  int last_ = 0;
};

Outcome renameFeature(const Task& task) {
  const auto name = task.text(L"name", text::kNameSize);
  if (!name.hasText() || name.text.empty()) {
    core::logWrite(L"The new name is empty, too long or can't be put together", core::kError);
    return done;
  }
  std::vector<NamedFeature> chosen;
  int components = 0;
  bool allTold = true;
  visitChosenFeatures(task, [&](const creo::ProFeature& feature, const std::wstring& former) {
    const auto type = creo::ProFeatureTypeGet(feature);
    if (!type) cantRead(kFeatureType);
    allTold = allTold && type;
    if (type && type.value == creo::kComponentFeature)
      ++components;
    else
      chosen.push_back({feature, former});
  });
  if (!allTold) return done;  // which of them are components, and how many names are needed, isn't known
  if (components > 0)
    core::logWrite(text::format(L"%d components keep the names of their models", components), core::kWarning);
  if (chosen.empty() && components == 0) core::logIndented(L"No feature found", core::kNormal, 1);
  if (chosen.size() == 1) {
    if (chosen[0].name != name.text) rename(chosen[0], name.text);
  } else if (!chosen.empty()) {
    NumberedNames names(task.model(), name.text);
    for (const NamedFeature& entry : chosen)
      if (names.isKnown() && !names.isOne(entry.name)) rename(entry, names.next());
  }
  return done;
}

// ---- the first features

// Nothing, with its line: that can't be told, and another one might be too many.
std::optional<bool> isFound(creo::ProError visited, std::wstring_view what) {
  if (!isWhole(visited, what)) return std::nullopt;
  return visited == creo::ProStopVisit;
}

std::optional<bool> hasFeature(creo::ProMdl solid, int type) {
  bool allTold = true;
  const auto visited = creo::ProSolidFeatVisit(solid, [&](const creo::ProFeature& feature) {
    const auto own = creo::ProFeatureTypeGet(feature);
    if (!own) cantRead(kFeatureType);
    allTold = allTold && own;
    return own && own.value == type ? creo::ProStopVisit : creo::ProNoError;
  });
  const std::optional<bool> isThere = isFound(visited, kFeatures);
  return allTold || (isThere && *isThere) ? isThere : std::nullopt;
}

std::optional<bool> hasCsys(creo::ProMdl solid) {
  const auto any = [](const creo::ProCsys&) { return creo::ProStopVisit; };
  const std::optional<bool> asFeature = hasFeature(solid, creo::kCsysFeature);
  if (!asFeature || *asFeature) return asFeature;
  return isFound(creo::ProSolidCsysVisit(solid, any), L"The coordinate systems");
}

// make: (name). Nothing where the attribute is absent or empty.
template <class Make>
void makeNamed(const Task& task, std::wstring_view attribute, Make make) {
  if (task.attribute(attribute).empty()) return;
  const auto name = task.text(attribute, text::kNameSize);
  const auto made = name.hasText() ? make(name.text) : creo::Got<creo::ProFeature>(creo::ProBadInputs);
  if (made)
    core::logIndented(text::format(L"%s is made", name.text), core::kNormal, 1);
  else if (made.error == creo::ProExists)
    core::logWrite(text::format(L"'%s' can't be made, another feature has that name", name.text), core::kError);
  else
    core::logWrite(text::format(L"The feature of '%s' can't be made", attribute), core::kError);
}

Outcome addFirstFeatures(const Task& task) {
  static constexpr std::pair<std::wstring_view, creo::ProDefaultPlane> kPlanes[] = {
      {L"planex", creo::ProDefaultPlane::x},
      {L"planey", creo::ProDefaultPlane::y},
      {L"planez", creo::ProDefaultPlane::z}};
  const creo::ProMdl solid = task.model();
  if (const auto isThere = hasCsys(solid); isThere && *isThere)
    core::logIndented(L"There is a coordinate system already", core::kNormal, 1);
  else if (isThere)
    makeNamed(task, L"csys", [&](const std::wstring& name) { return creo::ProDefaultCsysCreate(solid, name); });
  const auto hasPlanes = hasFeature(solid, creo::kDatumPlaneFeature);
  if (hasPlanes && *hasPlanes) core::logIndented(L"There are datum planes already", core::kNormal, 1);
  if (!hasPlanes || *hasPlanes) return done;
  for (const auto& [attribute, plane] : kPlanes)
    makeNamed(task, attribute,
              [&, which = plane](const std::wstring& name) { return creo::ProDefaultPlaneCreate(solid, name, which); });
  return done;
}

// ---- features that unbend

bool unbends(const creo::ProFeature& feature) {
  const std::wstring type = valueOrNone(creo::ProFeatureTypenameGet(feature), kFeatureType);
  return text::equalNoCase(type, L"UNBEND") || text::equalNoCase(type, L"FLAT PATTERN");
}

bool isSuppressed(const creo::ProFeature& feature) {
  const auto status = valueOrNone(creo::ProFeatureStatusGet(feature), L"The status of a feature");
  return status == creo::ProFeatureStatus::suppressed || status == creo::ProFeatureStatus::familyTableSuppressed;
}

Outcome showUnbendFeatures(const Task& task) {
  const bool shows = task.isTrue(L"show");
  if (!shows && task.attribute(L"show") != L"false") {
    core::logWrite(text::format(L"'show' can't be '%s', but true or false", task.attribute(L"show")), core::kError);
    return done;
  }
  std::vector<int> features;
  const creo::ProError visited = creo::ProSolidFeatVisit(task.model(), [&](const creo::ProFeature& feature) {
    if (unbends(feature) && isSuppressed(feature) == shows) features.push_back(feature.id);
    return creo::ProNoError;
  });
  if (!isWhole(visited, kFeatures)) return done;
  const creo::ProError result = features.empty() ? creo::ProNoError
                                : shows          ? creo::ProFeatureResume(task.model(), features)
                                                 : creo::ProFeatureWithoptionsSuppress(task.model(), features);
  if (result == creo::ProNoError)
    core::logIndented(text::format(shows ? L"%d features are resumed" : L"%d features are suppressed",
                                   static_cast<int>(features.size())),
                      core::kNormal, 1);
  else
    core::logWrite(shows ? L"Features can't be resumed" : L"Features can't be suppressed", core::kError);
  return done;
}

constexpr Attribute kName[] = {
    {.name = L"name",
     .variables = true,
     .need = Need::oneOf,
     .about = "the new name, up to 31 characters; of several features the first gets it with _1"},
};
constexpr auto kRenameAttributes = joined(kName, kWhichFeatures, kChosenFeatures);
constexpr Attribute kFirstAttributes[] = {
    {.name = L"csys", .variables = true, .need = Need::oneOf, .about = "the coordinate system's name"},
    {.name = L"planex",
     .variables = true,
     .need = Need::oneOf,
     .about = "the name of the plane that is normal to the x axis"},
    {.name = L"planey", .variables = true, .need = Need::oneOf, .about = "the same of the y axis"},
    {.name = L"planez", .variables = true, .need = Need::oneOf, .about = "the same of the z axis"},
};
constexpr Attribute kUnbendAttributes[] = {
    {.name = L"show",
     .kind = Kind::word,
     .words = L"true|false",
     .need = Need::oneOf,
     .about = "true: they are resumed; false: they are suppressed"},
};

constexpr Action kActions[] = {
    {.key = L"renameFeature",
     .place = 56,
     .title = Message::renameFeature,
     .conditions = kOnNativeSolids,
     .attributes = kRenameAttributes,
     .effects = {.changes = Touched::model},
     .about = "renames features; components keep the names of their models",
     .function = &renameFeature},
    {.key = L"addFirstKEs",
     .place = 66,
     .title = L"Add first features",
     .conditions = kOnNativeSolids,
     .attributes = kFirstAttributes,
     .effects = {.changes = Touched::model},
     .about = "makes the default coordinate system and the default planes where there are none",
     .function = &addFirstFeatures},
    {.key = L"showUnbendFeatures",
     .place = 91,
     .title = L"Show unbend features",
     .conditions = {kFilter, kParts, kNotInstance, kAnyOfTheWork},
     .attributes = kUnbendAttributes,
     .effects = {.changes = Touched::model},
     .about = "resumes or suppresses the features of a part that unbend it",
     .function = &showUnbendFeatures},
};

}  // namespace

std::span<const Action> featureActions() { return kActions; }

}  // namespace actions
