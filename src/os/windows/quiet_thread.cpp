#include "os/quiet_thread.h"

#include <atomic>
#include <system_error>
#include <utility>

namespace os {
namespace {

std::atomic<bool> none = false;

}  // namespace

// The system handles interrupts on a thread of its own.
std::thread quietThread(std::function<void()> work) {
  if (none) throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
  return std::thread(std::move(work));
}

NoQuietThreads::NoQuietThreads() { none = true; }
NoQuietThreads::~NoQuietThreads() { none = false; }

}  // namespace os
