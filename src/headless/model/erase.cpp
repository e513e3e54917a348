// Taking models out of memory.
#include <unordered_set>

#include "headless/model/models.h"
#include "headless/model/one_version.h"
#include "headless/store/faults.h"
#include "text/format.h"

namespace headless {

using creo::ProError;
using creo::ProMdl;

namespace {

std::wstring keyOf(const Model& model) { return modelKey(model.name, model.type()); }

}  // namespace

// What an instance changed stays with its generic, and a model that was never saved is made to be thrown away.
void Models::remove(const Model& model) {
  const ProMdl handle = model.handle;
  if (!model.row && model.document->isContentModified() && !model.document->folder.empty())
    message(erasedWithChanges(model.name + L'.' + std::wstring(creo::typeExtension(model.type()))));
  countUses(model, -1);
  byKey_.erase(keyOf(model));
  if (model.document.use_count() == 1) OneVersion::remember(*model.document);
  const auto at = static_cast<std::uint32_t>((handle.value & 0xFFFFFFFFu) - 1);
  places_[at].model.reset();
  ++places_[at].generation;
  free_.push_back(at);
  host_.erased(handle);
}

ProError Models::erase(ProMdl handle) {
  const Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  if (const auto used = uses_.find(keyOf(*model)); used != uses_.end() && used->second > 0) {
    message(text::format(L"%s.%s isn't erased: another model in memory uses it", model->name,
                         std::wstring(creo::typeExtension(model->type()))));
    return creo::ProGeneralError;
  }
  remove(*model);
  return creo::ProNoError;
}

std::vector<const Model*> Models::usedBy(const Model& model) const {
  std::vector<const Model*> used;
  const auto add = [&](const std::wstring& name, creo::ProMdlType type) {
    const auto found = byKey_.find(modelKey(name, type));
    if (found != byKey_.end() && places_[found->second].model.get() != &model)
      used.push_back(places_[found->second].model.get());
  };
  if (model.row) add(model.document->name, model.type());
  for (const creo::ProDependency& one : dependencies(model)) add(one.name, one.type);
  return used;
}

ProError Models::eraseAll(ProMdl handle, creo::FunctionRef<bool(ProMdl)> stays) {
  const Model* root = find(handle);
  if (!root) return creo::ProBadInputs;
  std::vector<const Model*> all = {root};
  std::unordered_map<const Model*, int> usesWithin = {{root, 0}};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (const Model* used : usedBy(*all[i])) {
      const auto [at, fresh] = usesWithin.try_emplace(used, 0);
      ++at->second;
      if (fresh) all.push_back(used);
    }
  }
  // Who is used from outside stays, and so does all that it uses.
  std::unordered_set<const Model*> kept;
  std::vector<const Model*> waiting;
  const auto keep = [&](const Model* model) {
    if (kept.insert(model).second) waiting.push_back(model);
  };
  for (const Model* model : all) {
    const auto uses = uses_.find(keyOf(*model));
    const bool usedOutside = uses != uses_.end() && uses->second > usesWithin[model];
    if (usedOutside || (model != root && stays(model->handle))) keep(model);
  }
  while (!waiting.empty()) {
    const Model* model = waiting.back();
    waiting.pop_back();
    for (const Model* used : usedBy(*model)) keep(used);
  }
  if (kept.contains(root)) return erase(handle);  // refused, with the reason
  for (const Model* model : all)
    if (!kept.contains(model)) remove(*model);
  return creo::ProNoError;
}

void Models::eraseUnless(creo::FunctionRef<bool(ProMdl)> stays) {
  std::unordered_set<const Model*> kept;
  std::vector<const Model*> waiting;
  const auto keep = [&](const Model* model) {
    if (kept.insert(model).second) waiting.push_back(model);
  };
  for (const Place& place : places_)
    if (place.model && stays(place.model->handle)) keep(place.model.get());
  while (!waiting.empty()) {
    const Model* model = waiting.back();
    waiting.pop_back();
    for (const Model* used : usedBy(*model)) keep(used);
  }
  for (const Place& place : places_) {
    const Model* model = place.model.get();
    if (!model || kept.contains(model)) continue;
    remove(*model);
  }
}

}  // namespace headless
