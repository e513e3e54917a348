// Windows by number. The first one is there from the start and never goes; it may be empty. One is active, the one that
// the person works in; one is current, the one in which calls act: the active one, until a call makes another current.
#pragma once

#include <map>
#include <unordered_map>
#include <vector>

#include "creo/ProMdl.h"

namespace headless {

class Windows {
 public:
  static constexpr int kFirst = 1;

  // An empty window, the one of the lowest number; a new one where there is none. It becomes neither active nor
  // current.
  int create();
  [[nodiscard]] bool has(int window) const { return windows_.contains(window); }
  // By number.
  [[nodiscard]] std::vector<int> all() const;
  [[nodiscard]] int current() const { return current_; }
  [[nodiscard]] int active() const { return order_.back(); }
  void setCurrent(int window) { current_ = window; }
  // Makes it the active one, and the current one too.
  void activate(int window);
  // The first window is emptied, and stays active if it was. Another one goes: the window that was active before it is
  // active again, and current where the closed one was.
  void close(int window);
  // The model that a window shows; none for an empty one, and for no window.
  [[nodiscard]] creo::ProMdl model(int window) const;
  // The window that shows a model; 0: none.
  [[nodiscard]] int of(creo::ProMdl model) const;
  [[nodiscard]] bool shows(creo::ProMdl model) const { return byModel_.contains(model.value); }
  // True when the window showed another model before.
  bool show(int window, creo::ProMdl model);
  // The model has gone: its window is empty.
  void forget(creo::ProMdl model);

 private:
  std::map<int, creo::ProMdl> windows_ = {{kFirst, {}}};  // with what they show
  std::unordered_map<std::uint64_t, int> byModel_;        // handle's value
  std::vector<int> order_ = {kFirst};                     // as they were active, the active one last
  int current_ = kFirst;
  int last_ = kFirst;
};

}  // namespace headless
