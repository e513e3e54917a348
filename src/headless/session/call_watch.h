// The gate that each call of an operation passes, in whatever session of the process: who stands there sees the call
// and may have it fail.
#pragma once

#include <string_view>

#include "creo/ProTypes.h"

namespace headless {

class Session;

class Gate {
 public:
  Gate() = default;
  virtual ~Gate() = default;
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;
  // Asked before the operation does anything. Another answer than ProNoError is the call's, which then does nothing.
  virtual creo::ProError called(std::string_view operation) = 0;
  // The session ends; nothing of it has gone yet. It must not throw.
  virtual void ends(Session& session) = 0;
};

// Null: nobody stands there.
Gate* gate();

// The gate is that one's for as long as it lives.
class GateGuard {
 public:
  explicit GateGuard(Gate& other);
  ~GateGuard();
  GateGuard(const GateGuard&) = delete;
  GateGuard& operator=(const GateGuard&) = delete;

 private:
  Gate* saved_;
};

}  // namespace headless
