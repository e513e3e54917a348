// What the threads of the server hand to the session's thread: what a person does, in order, and reads of the session's
// state. The session's thread alone touches the session.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace kelvane::view {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// One thing that a person does: {"do": "press", "dialog": ..., "component": ...}.
struct Action {
  std::uint64_t number = 0;  // from 1
  nlohmann::json what;
  Clock::time_point at;
};

class Inbox {
 public:
  // --- Any thread.
  // Its number; 0 where a hundred wait already, or the inbox is closed.
  std::uint64_t put(nlohmann::json what);
  // Has the session's thread run `read` and gives its result; nothing where that thread doesn't come to it in time.
  std::optional<std::string> ask(std::function<std::string()> read, milliseconds patience);
  // Nothing more is taken, and whoever waits goes on without an answer.
  void close();

  // --- The session's thread.
  // Waits for an action; answers the reads that come meanwhile. Nothing when the time is over.
  std::optional<Action> take(milliseconds patience);
  // Answers the reads that wait; costs next to nothing when none does.
  void answer() {
    if (reads_.load(std::memory_order_relaxed) > 0) answerAll();
  }

 private:
  struct Read {
    std::function<std::string()> read;
    std::string result;
    bool done = false;
  };
  void answerAll();

  std::mutex mutex_;
  std::condition_variable arrived_, answered_;
  std::deque<Action> actions_;
  std::deque<std::shared_ptr<Read>> waiting_;
  std::atomic<int> reads_ = 0;
  std::uint64_t last_ = 0;
  bool closed_ = false;
};

}  // namespace kelvane::view
