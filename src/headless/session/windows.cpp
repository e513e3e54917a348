#include "headless/session/windows.h"

#include <algorithm>

namespace headless {

int Windows::create() {
  const auto empty = std::find_if(windows_.begin(), windows_.end(), [](const auto& window) { return !window.second; });
  if (empty != windows_.end()) return empty->first;
  windows_[++last_] = {};
  order_.insert(order_.begin(), last_);
  return last_;
}

std::vector<int> Windows::all() const {
  std::vector<int> numbers;
  for (const auto& [number, model] : windows_) numbers.push_back(number);
  return numbers;
}

void Windows::activate(int window) {
  current_ = window;
  if (window == active()) return;
  std::erase(order_, window);
  order_.push_back(window);
}

void Windows::close(int window) {
  forget(model(window));
  if (window == kFirst) return;
  windows_.erase(window);
  std::erase(order_, window);
  if (current_ == window) current_ = active();
}

creo::ProMdl Windows::model(int window) const {
  const auto found = windows_.find(window);
  return found == windows_.end() ? creo::ProMdl{} : found->second;
}

int Windows::of(creo::ProMdl model) const {
  const auto shown = byModel_.find(model.value);
  return shown == byModel_.end() ? 0 : shown->second;
}

bool Windows::show(int window, creo::ProMdl model) {
  creo::ProMdl& shown = windows_.at(window);
  if (shown == model) return false;
  byModel_.erase(shown.value);
  shown = model;
  byModel_[model.value] = window;
  return true;
}

void Windows::forget(creo::ProMdl model) {
  const auto shown = byModel_.find(model.value);
  if (shown == byModel_.end()) return;
  windows_.at(shown->second) = {};
  byModel_.erase(shown);
}

}  // namespace headless
