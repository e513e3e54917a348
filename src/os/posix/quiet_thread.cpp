#include "os/quiet_thread.h"

#include <csignal>

namespace os {
namespace {

// A new thread begins with what is held by who starts it.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsHeld() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace

std::thread quietThread(std::function<void()> work) {
  const SignalsHeld held;
  return std::thread(std::move(work));
}

}  // namespace os
