#include "actions/environment/shown_models.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <vector>

#include "actions/under_work.h"
#include "actions/visits.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/ProSession.h"
#include "creo/ProWindow.h"

namespace actions {
namespace {

using creo::ProMdl;

bool isThere(ProMdl model) { return model && creo::ProMdlTypeGet(model); }

// The models that stand in windows.
std::vector<ProMdl> displayed() {
  using enum creo::ProMdlType;
  std::vector<ProMdl> shown;
  for (const auto type : {part, assembly, drawing})
    for (const ProMdl model : creo::ProSessionMdlList(type).value) {
      const auto window = creo::ProMdlWindowGet(model);
      if (window && creo::ProWindowMdlGet(window.value).value == model) shown.push_back(model);
    }
  return shown;
}

// What a model needs in memory: what it uses, and the generic of an instance. The topmost one where the immediate one
// isn't there.
std::vector<ProMdl> neededBy(ProMdl model) {
  std::vector<ProMdl> needed;
  for (const creo::ProDependency& dependency : usedBy(model))
    if (const auto used = creo::ProMdlInit(dependency.name, dependency.type)) needed.push_back(used.value);
  auto generic = creo::ProFaminstanceGenericGet(model, true);
  if (!generic) generic = creo::ProFaminstanceGenericGet(model, false);
  if (generic) needed.push_back(generic.value);
  return needed;
}

// The first model under work that neither is one of these nor is needed by them.
std::optional<ProMdl> wouldGo(std::vector<ProMdl> shown) {
  std::unordered_set<std::uint64_t> stay;
  const auto stays = [&](ProMdl model) { return stay.contains(model.value); };
  std::vector<ProMdl> open;
  for (const ProMdl model : modelsUnderWork())
    if (isThere(model)) open.push_back(model);
  for (const ProMdl model : shown) stay.insert(model.value);
  std::erase_if(open, stays);
  // Most often all stand in windows, and an assembly's thousands of models needn't be looked at.
  while (!open.empty() && !shown.empty()) {
    const ProMdl next = shown.back();
    shown.pop_back();
    for (const ProMdl model : neededBy(next))
      if (stay.insert(model.value).second) shown.push_back(model);
    std::erase_if(open, stays);
  }
  return open.empty() ? std::nullopt : std::optional(open.front());
}

// The window that a model would be displayed in; none: one would have to be made.
creo::Got<int> windowFor(ProMdl model) {
  const auto own = creo::ProMdlWindowGet(model);
  return own ? own : creo::ProWindowCurrentGet();
}

ProMdl innermost() {
  const auto& models = modelsUnderWork();
  const auto last = std::find_if(models.rbegin(), models.rend(), &isThere);
  return last == models.rend() ? ProMdl{} : *last;
}

}  // namespace

std::optional<ProMdl> keepModelsUnderWork() {
  std::vector<ProMdl> shown = displayed();
  const auto goes = wouldGo(shown);
  if (!goes) return goes;
  const ProMdl model = innermost();
  const auto window = windowFor(model);
  if (!window) return goes;
  std::erase(shown, creo::ProWindowMdlGet(window.value).value);
  shown.push_back(model);
  if (const auto other = wouldGo(std::move(shown))) return other;
  return creo::ProMdlDisplay(model) == creo::ProNoError ? std::nullopt : goes;
}

}  // namespace actions
