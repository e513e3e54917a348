// Windows by number. Exactly one is current, or none.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "creo/ProMdl.h"

namespace headless {

class Windows {
 public:
  // A window kept for a model of that key (modelKey); the one there is already.
  int create(const std::wstring& key);
  [[nodiscard]] bool has(int window) const { return windows_.contains(window); }
  // By number.
  [[nodiscard]] std::vector<int> all() const;
  // 0: none.
  [[nodiscard]] int current() const { return order_.empty() ? 0 : order_.back(); }
  void setCurrent(int window);
  // The window used before becomes current.
  void close(int window);
  // The model that a window shows; none for an empty one.
  [[nodiscard]] creo::ProMdl model(int window) const;
  // The window that shows a model or is kept for it; 0: none.
  [[nodiscard]] int of(creo::ProMdl model, const std::wstring& key) const;
  [[nodiscard]] bool shows(creo::ProMdl model) const { return byModel_.contains(model.value); }
  // True when the window showed another model before.
  bool show(int window, creo::ProMdl model);
  // The model has gone: its windows are empty.
  void forget(creo::ProMdl model);

 private:
  struct Window {
    creo::ProMdl model;
    std::wstring key;
  };
  std::map<int, Window> windows_;
  std::unordered_map<std::uint64_t, int> byModel_;  // handle's value
  std::unordered_map<std::wstring, int> byKey_;
  std::vector<int> order_;  // the current one last
  int last_ = 0;
};

}  // namespace headless
