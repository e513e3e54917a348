// How far a run is: a bar on a terminal, else a line a model.
#pragma once

#include <chrono>
#include <string>

#include "kelvane/base/console.h"

namespace kelvane {

class Progress {
 public:
  explicit Progress(Console& console) : console_(console) {}
  void begin(int models);
  // A model is finished.
  void step(int done, const std::string& model, const std::string& outcome);
  [[nodiscard]] double seconds() const;

 private:
  Console& console_;
  int models_ = 0;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace kelvane
