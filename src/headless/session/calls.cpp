#include "headless/session/calls.h"

#include "headless/session/call_watch.h"

namespace headless {

creo::ProError Calls::count(std::string_view operation) {
  Counted& counted = counts_[operation.data()];
  counted.operation = operation;
  ++counted.calls;
  if (CallWatch* const watch = callWatch())
    if (const creo::ProError answer = watch->called(operation)) return answer;
  if (!faults_.empty()) {
    if (const auto arranged = faults_.find(operation); arranged != faults_.end()) {
      const creo::ProError code = arranged->second.front();
      arranged->second.pop_front();
      if (arranged->second.empty()) faults_.erase(arranged);
      return code;
    }
  }
  if (every_ == 0 || ++sinceFault_ < every_) return creo::ProNoError;
  sinceFault_ = 0;
  return creo::ProGeneralError;
}

void Calls::failNext(std::string_view operation, creo::ProError code) {
  faults_[std::string(operation)].push_back(code);
}

void Calls::failEvery(int n) {
  every_ = n > 0 ? n : 0;
  sinceFault_ = 0;
}

int Calls::of(std::string_view operation) const {
  int calls = 0;
  for (const auto& [literal, counted] : counts_)
    if (counted.operation == operation) calls += counted.calls;
  return calls;
}

}  // namespace headless
