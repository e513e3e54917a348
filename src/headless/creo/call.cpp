#include "headless/creo/call.h"

#include "headless/creo/state.h"

namespace headless {

Call::Call(std::string_view operation) : operation_(operation) {
  Session* session = Session::currentOrNull();
  if (!session) {
    error_ = creo::ProGeneralError;
    return;
  }
  Session::State& state = session->state();
  error_ = state.calls.count(operation);
  if (state.tracing) start_ = std::chrono::steady_clock::now();
}

Call::~Call() {
  if (start_ == std::chrono::steady_clock::time_point{}) return;
  Session* session = Session::currentOrNull();
  if (!session || !session->state().observer) return;
  const auto taken = std::chrono::steady_clock::now() - start_;
  session->state().observer->operation(operation_, error_,
                                       std::chrono::duration_cast<std::chrono::nanoseconds>(taken).count());
}

creo::ProError Calls::count(std::string_view operation) {
  Counted& counted = counts_[operation.data()];
  counted.operation = operation;
  ++counted.calls;
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
