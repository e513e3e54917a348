#include <algorithm>
#include <atomic>
#include <functional>
#include <optional>
#include <system_error>
#include <thread>

#include "headless/geometry/body.h"
#include "os/quiet_thread.h"

namespace headless::geometry {
namespace {

// None for one that fails in a way of its own: who asks for it alone is told.
std::optional<Built> builtOrNone(const std::vector<Primitive>& primitives) {
  try {
    return build(primitives);
  } catch (...) {
    return std::nullopt;
  }
}

// Threads beside this one, which are waited for in any case.
class Helpers {
 public:
  ~Helpers() {
    for (std::thread& thread : threads_) thread.join();
  }
  // As many as the system has, if it has fewer.
  void start(std::size_t count, const std::function<void()>& work) {
    try {
      while (threads_.size() < count) threads_.push_back(os::quietThread(work));
    } catch (const std::system_error&) {
      return;
    }
  }

 private:
  std::vector<std::thread> threads_;
};

}  // namespace

std::vector<std::optional<Built>> buildAll(const std::vector<std::vector<Primitive>>& bodies) {
  std::vector<std::optional<Built>> all(bodies.size());
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t i = next++; i < bodies.size(); i = next++) all[i] = builtOrNone(bodies[i]);
  };
  {
    Helpers helpers;
    const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1U);
    helpers.start(std::min(cores, std::max<std::size_t>(bodies.size(), 1)) - 1, work);
    work();
  }
  return all;
}

}  // namespace headless::geometry
