// The first line of every operation: counts it, traces it, and carries out a fault that was arranged for it.
#pragma once

#include <chrono>
#include <string_view>

#include "creo/ProTypes.h"

namespace headless {

// Usage:  Call call("ProMdlSave");  if (call.failed()) return call.error();
// A call without a session gives ProGeneralError.
class Call {
 public:
  // operation: a literal; it is kept by reference.
  explicit Call(std::string_view operation);
  ~Call();
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  [[nodiscard]] bool failed() const { return error_ != creo::ProNoError; }
  [[nodiscard]] creo::ProError error() const { return error_; }
  // The operation's result, for the trace.
  void finish(creo::ProError result) { error_ = result; }

 private:
  std::string_view operation_;
  creo::ProError error_ = creo::ProNoError;
  std::chrono::steady_clock::time_point start_{};  // only while tracing
};

}  // namespace headless
