#include "kelvane/ui/inbox.h"

namespace kelvane::view {
namespace {

constexpr std::size_t kMostWaiting = 100;  // actions, and reads

}  // namespace

std::uint64_t Inbox::put(nlohmann::json what) {
  const std::lock_guard lock(mutex_);
  if (closed_ || actions_.size() >= kMostWaiting) return 0;
  actions_.push_back({++last_, std::move(what), Clock::now()});
  arrived_.notify_one();
  return last_;
}

std::optional<std::string> Inbox::ask(std::function<std::string()> read, milliseconds patience) {
  const auto asked = std::make_shared<Read>();
  asked->read = std::move(read);
  std::unique_lock lock(mutex_);
  if (closed_ || waiting_.size() >= kMostWaiting) return std::nullopt;
  waiting_.push_back(asked);
  ++reads_;
  arrived_.notify_one();
  answered_.wait_for(lock, patience, [&] { return asked->done || closed_; });
  if (asked->done) return std::move(asked->result);
  if (std::erase(waiting_, asked) > 0) --reads_;
  return std::nullopt;
}

void Inbox::close() {
  const std::lock_guard lock(mutex_);
  closed_ = true;
  arrived_.notify_all();
  answered_.notify_all();
}

std::optional<Action> Inbox::take(milliseconds patience) {
  const Clock::time_point end = Clock::now() + patience;
  for (;;) {
    answerAll();
    std::unique_lock lock(mutex_);
    if (!actions_.empty()) {
      Action action = std::move(actions_.front());
      actions_.pop_front();
      return action;
    }
    if (closed_ || !arrived_.wait_until(lock, end, [&] { return closed_ || !actions_.empty() || !waiting_.empty(); }))
      return std::nullopt;
  }
}

void Inbox::answerAll() {
  for (;;) {
    std::shared_ptr<Read> next;
    {
      const std::lock_guard lock(mutex_);
      if (waiting_.empty()) return;
      next = std::move(waiting_.front());
      waiting_.pop_front();
      --reads_;
    }
    std::string result = next->read();
    const std::lock_guard lock(mutex_);
    next->result = std::move(result);
    next->done = true;
    answered_.notify_all();
  }
}

}  // namespace kelvane::view
