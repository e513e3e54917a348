// How often each operation was called, and the faults arranged for calls to come.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "creo/ProTypes.h"

namespace headless {

class Calls {
 public:
  // Counts a call; its result is the fault that was arranged for it. operation: a literal.
  creo::ProError count(std::string_view operation);
  // Faults of one operation are given in the order in which they were arranged.
  void failNext(std::string_view operation, creo::ProError code);
  void failEvery(int n);
  [[nodiscard]] int of(std::string_view operation) const;

 private:
  std::unordered_map<std::string_view, int> counts_;
  std::map<std::string, std::deque<creo::ProError>, std::less<>> faults_;
  int every_ = 0, sinceFault_ = 0;
};

}  // namespace headless
