#include "headless/model/erase.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

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

void tellStays(const Models& models, const Model& model, std::wstring_view why) {
  models.message(text::format(L"%s.%s isn't erased: %s", model.name, std::wstring(creo::typeExtension(model.type())),
                              std::wstring(why)));
}

void tellUsed(const Models& models, const Model& model) {
  tellStays(models, model, L"another model in memory uses it");
}

}  // namespace

ProError eraseModel(Models& models, ProMdl handle) {
  const Model* model = models.look(handle);
  if (!model) return creo::ProBadInputs;
  if (models.usesOf(*model) > 0) {
    tellUsed(models, *model);
    return creo::ProGeneralError;
  }
  models.remove(*model);
  return creo::ProNoError;
}

Erasures::Erasures(Models& models, std::function<bool(ProMdl)> isShown)
    : models_(models), isShown_(std::move(isShown)) {}

// Uses by models that are to go as well, but for those of a group whose uses are counted already.
int Erasures::usesByGoing(const Model& used, const Uses& counted) const {
  std::ptrdiff_t uses = 0;
  for (const auto& [handle, asked] : asked_) {
    const Model* user = models_.look({handle});
    if (!user || counted.contains(user)) continue;
    const auto all = models_.usedBy(*user);
    uses += std::count(all.begin(), all.end(), &used);
  }
  return static_cast<int>(uses);
}

bool Erasures::isUsed(const Model& model, const Uses& counted) const {
  const auto within = counted.find(&model);
  const int others = models_.usesOf(model) - (within == counted.end() ? 0 : within->second);
  return others > 0 && others > usesByGoing(model, counted);
}

std::vector<const Model*> Erasures::goingWith(const Model& root, bool withUsed) const {
  std::vector<const Model*> all = {&root};
  Uses within;
  if (withUsed) within[&root] = 0;
  for (std::size_t i = 0; withUsed && i < all.size(); ++i) {
    for (const Model* used : models_.usedBy(*all[i])) {
      const auto [at, fresh] = within.try_emplace(used, 0);
      ++at->second;
      if (fresh) all.push_back(used);
    }
  }
  // Who is used from outside stays, and so does all that it uses.
  Kept kept(models_);
  for (const Model* model : all)
    if (isUsed(*model, within) || (model != &root && isShown_(model->handle))) kept.add(model);
  kept.addUsed();
  if (kept.has(&root)) return {};
  std::erase_if(all, [&](const Model* model) { return kept.has(model); });
  return all;
}

ProError Erasures::ask(ProMdl handle, bool withUsed) {
  const Model* root = models_.look(handle);
  if (!root) return creo::ProBadInputs;
  const auto going = goingWith(*root, withUsed);
  if (going.empty()) {
    tellUsed(models_, *root);
    return creo::ProGeneralError;
  }
  Asked& asked = asked_[handle.value];
  // Asked for with all that it uses, it goes so, however it is asked for behind that.
  if (asked.by != handle) asked = {.by = handle};
  asked.withUsed = asked.withUsed || withUsed;
  asked.wasShown = isShown_(handle);
  for (const Model* model : going)
    if (asked_.try_emplace(model->handle.value, Asked{.by = handle}).second) asked.with.push_back(model->handle.value);
  return creo::ProNoError;
}

void Erasures::carryOut(ProMdl handle) {
  const auto found = asked_.find(handle.value);
  if (found == asked_.end() || found->second.by != handle) return;
  const Asked asked = found->second;
  asked_.erase(found);
  for (const std::uint64_t with : asked.with)
    if (const auto entry = asked_.find(with); entry != asked_.end() && entry->second.by == handle) asked_.erase(entry);
  const Model* root = models_.look(handle);
  if (!root) return;
  if (!asked.wasShown && isShown_(handle)) return tellStays(models_, *root, L"a window shows it by now");
  const auto going = goingWith(*root, asked.withUsed);
  if (going.empty()) tellUsed(models_, *root);
  for (const Model* model : going) models_.remove(*model);
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
