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
  struct Counted {
    std::string_view operation;
    int calls = 0;
  };
  // By the literal's address: comparing names would cost more than many an operation. A name that stands in two files
  // may be there twice.
  std::unordered_map<const char*, Counted> counts_;
  std::map<std::string, std::deque<creo::ProError>, std::less<>> faults_;
  int every_ = 0, sinceFault_ = 0;
};

}  // namespace headless
