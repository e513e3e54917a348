#include "os/quiet_thread.h"

#include <atomic>
#include <csignal>
#include <system_error>
#include <utility>

namespace os {
namespace {

std::atomic<bool> none = false;

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
  if (none) throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
  const SignalsHeld held;
  return std::thread(std::move(work));
}

NoQuietThreads::NoQuietThreads() { none = true; }
NoQuietThreads::~NoQuietThreads() { none = false; }

}  // namespace os
