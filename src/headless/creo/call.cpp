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

}  // namespace headless
