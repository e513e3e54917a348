#include "headless/session/windows.h"

#include <algorithm>

namespace headless {

int Windows::create(const std::wstring& key) {
  const auto [at, fresh] = byKey_.try_emplace(key, last_ + 1);
  if (!fresh) return at->second;
  windows_[++last_].key = key;
  order_.insert(order_.empty() ? order_.begin() : order_.end() - 1, last_);  // opening makes nothing current
  return last_;
}

std::vector<int> Windows::all() const {
  std::vector<int> numbers;
  for (const auto& [number, window] : windows_) numbers.push_back(number);
  return numbers;
}

void Windows::setCurrent(int window) {
  if (window == current()) return;
  std::erase(order_, window);
  order_.push_back(window);
}

void Windows::close(int window) {
  const auto found = windows_.find(window);
  if (found == windows_.end()) return;
  forget(found->second.model);
  byKey_.erase(found->second.key);
  windows_.erase(found);
  std::erase(order_, window);
}

creo::ProMdl Windows::model(int window) const {
  const auto found = windows_.find(window);
  return found == windows_.end() ? creo::ProMdl{} : found->second.model;
}

int Windows::of(creo::ProMdl model, const std::wstring& key) const {
  if (const auto shown = byModel_.find(model.value); shown != byModel_.end()) return shown->second;
  const auto kept = byKey_.find(key);
  return kept == byKey_.end() ? 0 : kept->second;
}

bool Windows::show(int window, creo::ProMdl model) {
  Window& entry = windows_.at(window);
  if (entry.model == model) return false;
  byModel_.erase(entry.model.value);
  entry.model = model;
  byModel_[model.value] = window;
  return true;
}

void Windows::forget(creo::ProMdl model) {
  const auto shown = byModel_.find(model.value);
  if (shown == byModel_.end()) return;
  windows_.at(shown->second).model = {};
  byModel_.erase(shown);
}

}  // namespace headless
