// Hears of each call of an operation, in whatever session of the process, and may have it fail.
#pragma once

#include <string_view>

#include "creo/ProTypes.h"

namespace headless {

class Session;

class CallWatch {
 public:
  CallWatch() = default;
  virtual ~CallWatch() = default;
  CallWatch(const CallWatch&) = delete;
  CallWatch& operator=(const CallWatch&) = delete;
  // Asked before the operation does anything. Another answer than ProNoError is the call's, which then does nothing.
  virtual creo::ProError called(std::string_view operation) = 0;
  // The session ends; nothing of it has gone yet. It must not throw.
  virtual void ends(Session& session) = 0;
};

// Null: nobody watches.
CallWatch* callWatch();

// That one watches for as long as the guard lives.
class CallWatchGuard {
 public:
  explicit CallWatchGuard(CallWatch& other);
  ~CallWatchGuard();
  CallWatchGuard(const CallWatchGuard&) = delete;
  CallWatchGuard& operator=(const CallWatchGuard&) = delete;

 private:
  CallWatch* saved_;
};

}  // namespace headless
