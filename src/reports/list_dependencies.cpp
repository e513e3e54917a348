// The list of the models that a model uses.
#include <algorithm>
#include <limits>
#include <optional>
#include <unordered_map>

#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "language/compare.h"
#include "reports/list_rows.h"
#include "text/format.h"
#include "text/letters.h"

namespace reports {
namespace {

using Quantity = long long;
constexpr Quantity kMost = std::numeric_limits<Quantity>::max();

// How often each model stands in the tree of an assembly, on all levels. Each model's components are read once, so that
// a subassembly that stands there a thousand times costs no more than one.
class TreeQuantities {
 public:
  explicit TreeQuantities(creo::ProMdl assembly) {
    collect(assembly);
    quantities_[assembly.value] = 1;
    // Users before what they use: a model's own quantity is known when it is handed down.
    std::for_each(order_.rbegin(), order_.rend(), [this](std::uint64_t model) {
      for (const creo::ProMdl component : components_[model]) handDown(model, component);
    });
  }
  // 0: it doesn't stand there.
  [[nodiscard]] Quantity of(creo::ProMdl model) const {
    const auto found = quantities_.find(model.value);
    return found == quantities_.end() ? 0 : found->second;
  }

 private:
  void collect(creo::ProMdl top) {
    struct Visit {
      std::uint64_t model;
      std::size_t next = 0;
    };
    std::vector<Visit> open;
    const auto begin = [&](creo::ProMdl model) {
      if (!components_.try_emplace(model.value).second) return;
      components_[model.value] = componentsOf(model);
      open.push_back({model.value});
    };
    begin(top);
    while (!open.empty()) {
      Visit& visit = open.back();
      const auto& components = components_[visit.model];
      if (visit.next < components.size()) {
        begin(components[visit.next++]);
        continue;
      }
      place_[visit.model] = order_.size();
      order_.push_back(visit.model);
      open.pop_back();
    }
  }

  // Suppressed components don't stand in the tree.
  static std::vector<creo::ProMdl> componentsOf(creo::ProMdl model) {
    std::vector<creo::ProMdl> components;
    creo::ProSolidFeatVisit(model, [&](const creo::ProFeature& feature) {
      if (creo::ProFeatureTypeGet(feature).value != creo::kComponentFeature) return creo::ProNoError;
      const auto status = creo::ProFeatureStatusGet(feature);
      if (status && isSuppressed(status.value)) return creo::ProNoError;
      if (const auto component = creo::ProAsmcompMdlGet(feature)) components.push_back(component.value);
      return creo::ProNoError;
    });
    return components;
  }
  static bool isSuppressed(creo::ProFeatureStatus status) {
    return status >= creo::ProFeatureStatus::familyTableSuppressed && status <= creo::ProFeatureStatus::suppressed;
  }

  void handDown(std::uint64_t user, creo::ProMdl component) {
    if (place_[component.value] >= place_[user]) return;  // a ring: what contains itself isn't counted for ever
    Quantity& sum = quantities_[component.value];
    const Quantity more = quantities_[user];
    sum = sum > kMost - more ? kMost : sum + more;
  }

  std::unordered_map<std::uint64_t, std::vector<creo::ProMdl>> components_;
  std::vector<std::uint64_t> order_;  // what is used before its users
  std::unordered_map<std::uint64_t, std::size_t> place_;
  std::unordered_map<std::uint64_t, Quantity> quantities_;
};

struct Dependency {
  const ListSubject& subject;
  const creo::ProDependency& used;
  creo::Got<creo::ProMdl> model;
  const TreeQuantities* tree;  // null: the model has no model tree
};

// The file of an instance is its generic's, and named without it.
std::wstring usedName(const creo::ProDependency& used) { return language::patternReplace(used.name, L"/<.*>/", L""); }

std::wstring quantity(const Dependency& dependency) {
  if (!dependency.tree || !dependency.model) return {};
  return text::format(L"%lld", dependency.tree->of(dependency.model.value));
}

constexpr ListColumn<Dependency> kColumns[] = {
    {L"File name", L"fname", [](const Dependency& dependency) { return dependency.subject.file.name; }},
    {L"File path", L"fpath", [](const Dependency& dependency) { return dependency.subject.file.path; }},
    {L"Dependend file name", L"name",
     [](const Dependency& dependency) {
       return usedName(dependency.used) + L"." + text::lower(dependency.used.typeText);
     }},
    {L"Dependend file path", L"path",
     [](const Dependency& dependency) {
       return dependency.model ? modelFile(dependency.model.value).path : std::wstring();
     }},
    {L"Quantity in modeltree", L"quantity", &quantity},
};

}  // namespace

void dependencyList(CsvReport& report, const ListSubject& subject) {
  const ListRows<Dependency> rows(report, kColumns);
  const auto used = creo::ProMdlDependenciesList(subject.model);
  if (!used) return;  // or it uses nothing
  std::optional<TreeQuantities> tree;
  if (subject.type == creo::ProMdlType::assembly) tree.emplace(subject.model);
  for (const creo::ProDependency& dependency : used.value)
    rows.add({subject, dependency, creo::ProMdlRetrieve(dependency.name, dependency.type), tree ? &*tree : nullptr});
}

}  // namespace reports
