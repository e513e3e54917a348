#include "headless/model/erase.h"

#include <unordered_map>
#include <unordered_set>

#include "headless/model/models.h"
#include "text/format.h"

namespace headless {

using creo::ProError;
using creo::ProMdl;

namespace {

// Models, and whatever they use.
class Kept {
 public:
  explicit Kept(const Models& models) : models_(models) {}
  void add(const Model* model) {
    if (kept_.insert(model).second) waiting_.push_back(model);
  }
  void addUsed() {
    while (!waiting_.empty()) {
      const Model* model = waiting_.back();
      waiting_.pop_back();
      for (const Model* used : models_.usedBy(*model)) add(used);
    }
  }
  [[nodiscard]] bool has(const Model* model) const { return kept_.contains(model); }

 private:
  const Models& models_;
  std::unordered_set<const Model*> kept_;
  std::vector<const Model*> waiting_;
};

}  // namespace

ProError eraseModel(Models& models, ProMdl handle) {
  const Model* model = models.find(handle);
  if (!model) return creo::ProBadInputs;
  if (models.usesOf(*model) > 0) {
    models.message(text::format(L"%s.%s isn't erased: another model in memory uses it", model->name,
                                std::wstring(creo::typeExtension(model->type()))));
    return creo::ProGeneralError;
  }
  models.remove(*model);
  return creo::ProNoError;
}

ProError eraseWithUsed(Models& models, ProMdl handle, creo::FunctionRef<bool(ProMdl)> stays) {
  const Model* root = models.find(handle);
  if (!root) return creo::ProBadInputs;
  std::vector<const Model*> all = {root};
  std::unordered_map<const Model*, int> usesWithin = {{root, 0}};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (const Model* used : models.usedBy(*all[i])) {
      const auto [at, fresh] = usesWithin.try_emplace(used, 0);
      ++at->second;
      if (fresh) all.push_back(used);
    }
  }
  // Who is used from outside stays, and so does all that it uses.
  Kept kept(models);
  for (const Model* model : all) {
    const bool usedOutside = models.usesOf(*model) > usesWithin[model];
    if (usedOutside || (model != root && stays(model->handle))) kept.add(model);
  }
  kept.addUsed();
  if (kept.has(root)) return eraseModel(models, handle);  // refused, with the reason
  for (const Model* model : all)
    if (!kept.has(model)) models.remove(*model);
  return creo::ProNoError;
}

void eraseUnless(Models& models, creo::FunctionRef<bool(ProMdl)> stays) {
  const std::vector<Model*> all = models.all();
  Kept kept(models);
  for (const Model* model : all)
    if (stays(model->handle)) kept.add(model);
  kept.addUsed();
  for (const Model* model : all)
    if (!kept.has(model)) models.remove(*model);
}

}  // namespace headless
