#include "headless/session/call_watch.h"

namespace headless {
namespace {

CallWatch*& watching() {
  static CallWatch* one = nullptr;
  return one;
}

}  // namespace

CallWatch* callWatch() { return watching(); }

CallWatchGuard::CallWatchGuard(CallWatch& other) : saved_(watching()) { watching() = &other; }
CallWatchGuard::~CallWatchGuard() { watching() = saved_; }

}  // namespace headless
