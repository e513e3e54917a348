// The report on what a model uses, and on features that aren't there as they should be.
#include <unordered_set>

#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "reports/report_row.h"
#include "text/format.h"
#include "text/letters.h"

namespace reports {
namespace {

using namespace actions;
using creo::ProDependency;
using creo::ProFeatureStatus;

struct DependencyFacts {
  creo::ProMdl model;
  std::vector<ProDependency> uses;
};

// Of a kind that isn't known a part.
creo::ProMdlType typeOf(std::wstring_view typeText) {
  using creo::ProMdlType;
  static constexpr std::pair<std::wstring_view, ProMdlType> kTypes[] = {
      {L"prt", ProMdlType::part},          {L"asm", ProMdlType::assembly}, {L"drw", ProMdlType::drawing},
      {L"mfg", ProMdlType::manufacturing}, {L"lay", creo::kLayoutType},
  };
  for (const auto& [text, type] : kTypes)
    if (text::equalNoCase(text, typeText)) return type;
  return ProMdlType::part;
}

creo::Got<creo::ProMdl> retrieved(const ProDependency& used) {
  return creo::ProMdlRetrieve(used.name, typeOf(used.typeText));
}

std::wstring fileName(const ProDependency& used) { return used.name + L"." + used.typeText; }

// The names of those that a test lets through. test: (dependency).
template <class Test>
std::wstring fileNames(const DependencyFacts& facts, Test&& test) {
  std::wstring lines;
  for (const ProDependency& used : facts.uses)
    if (test(used)) appendLine(lines, fileName(used));
  return lines;
}

std::wstring all(const DependencyFacts& facts) {
  return fileNames(facts, [](const ProDependency&) { return true; });
}

std::wstring allWithPath(const DependencyFacts& facts) {
  std::wstring lines;
  for (const ProDependency& used : facts.uses) {
    const auto model = retrieved(used);
    const auto origin = model ? creo::ProMdlOriginGet(model.value) : creo::Got<std::wstring>(model.error);
    appendLine(lines, origin && !origin.value.empty() ? origin.value : fileName(used));
  }
  return lines;
}

std::wstring allPaths(const DependencyFacts& facts) {
  std::wstring lines;
  std::unordered_set<std::wstring> seen;
  for (const ProDependency& used : facts.uses) {
    const auto model = retrieved(used);
    if (!model) continue;
    const auto folder = creo::ProMdlDirectoryPathGet(model.value);
    if (folder && seen.insert(folder.value).second) appendLine(lines, folder.value);
  }
  return lines;
}

std::wstring layouts(const DependencyFacts& facts) {
  return fileNames(facts, [](const ProDependency& used) { return typeOf(used.typeText) == creo::kLayoutType; });
}

std::wstring missing(const DependencyFacts& facts) {
  return fileNames(facts, [](const ProDependency& used) { return !retrieved(used); });
}

std::wstring featuresOf(const DependencyFacts& facts, ProFeatureStatus wanted) {
  std::wstring lines;
  creo::ProSolidFeatVisit(facts.model, [&](const creo::ProFeature& feature) {
    const auto status = creo::ProFeatureStatusGet(feature);
    if (status && status.value == wanted)
      appendLine(lines, text::format(L"%d - %s", feature.id, creo::ProFeatureNameGet(feature).value));
    return creo::ProNoError;
  });
  return lines;
}

std::wstring suppressed(const DependencyFacts& facts) { return featuresOf(facts, ProFeatureStatus::suppressed); }
std::wstring inactive(const DependencyFacts& facts) { return featuresOf(facts, ProFeatureStatus::inactive); }
std::wstring unregenerated(const DependencyFacts& facts) { return featuresOf(facts, ProFeatureStatus::unregenerated); }

// clang-format off
constexpr ReportColumn<DependencyFacts> kColumns[] = {
    {L"all", L"All dependencies", &all, "what the model uses directly"},
    {L"allwithpath", L"All dependencies with path", &allWithPath, "the file of each; they are retrieved"},
    {L"allpath", L"All dependency paths", &allPaths, "the folders of those that can be retrieved, each once"},
    {L"layouts", L"Dependent from layouts", &layouts, "layouts that it uses"},
    {L"missing", L"Missing dependencies", &missing, "those that can't be retrieved"},
};
constexpr ReportColumn<DependencyFacts> kFeatureColumns[] = {
    {L"supfeat", L"Suppressed features", &suppressed, "suppressed features; parts and assemblies only"},
    {L"inafeat", L"Inactive features", &inactive, "inactive features, the same"},
    {L"unrfeat", L"Unregenerated features", &unregenerated, "unregenerated features, the same"},
};
// clang-format on

Outcome reportDependencies(const Task& task) {
  const auto row = ReportRow::of(task);
  if (!row) return done;
  const DependencyFacts facts{task.model(), creo::ProMdlDependenciesList(task.model()).value};
  reportColumns<DependencyFacts>(*row, task, kColumns, facts);
  const auto type = creo::ProMdlTypeGet(task.model());
  if (type && (type.value == creo::ProMdlType::part || type.value == creo::ProMdlType::assembly))
    reportColumns<DependencyFacts>(*row, task, kFeatureColumns, facts);
  return done;
}

constexpr auto kAttributes = reportAttributes(kColumns, kFeatureColumns);

constexpr Action kActions[] = {
    {.key = L"reportDependencies",
     .place = 29,
     .title = L"Report Dependencies",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::reports | Touched::session},
     .about = "reports what the model uses, and features that aren't there as they should be",
     .function = &reportDependencies},
};

}  // namespace

std::span<const actions::Action> dependencyReportActions() { return kActions; }

}  // namespace reports
