#include "headless/session/gate.h"

namespace headless {
namespace {

Gate*& standing() {
  static Gate* one = nullptr;
  return one;
}

}  // namespace

Gate* gate() { return standing(); }

GateGuard::GateGuard(Gate& other) : saved_(standing()) { standing() = &other; }
GateGuard::~GateGuard() { standing() = saved_; }

}  // namespace headless
