#include "kelvane/ui/feed.h"

namespace kelvane::view {
namespace {

constexpr std::size_t kMostListeners = 16;
constexpr std::size_t kMostBehind = 8U << 20U;  // bytes that a page may lag behind

}  // namespace

std::optional<Event> Feed::Listener::next(milliseconds patience) {
  std::unique_lock lock(mutex_);
  arrived_.wait_for(lock, patience, [this] { return over_ || !events_.empty(); });
  if (events_.empty()) return std::nullopt;
  Event event = std::move(events_.front());
  events_.pop_front();
  bytes_ -= event.data->size();
  return event;
}

bool Feed::Listener::over() {
  const std::lock_guard lock(mutex_);
  return over_ && events_.empty();
}

void Feed::give(Listener& listener, const Event& event) {
  const std::lock_guard lock(listener.mutex_);
  if (listener.over_) return;
  if (listener.bytes_ + event.data->size() > kMostBehind && !listener.events_.empty()) {
    listener.events_.clear();
    listener.bytes_ = 0;
    listener.over_ = true;
  } else {
    listener.events_.push_back(event);
    listener.bytes_ += event.data->size();
  }
  listener.arrived_.notify_one();
}

void Feed::tell(std::string whole, std::string change) {
  const Event event{"change", std::make_shared<const std::string>(std::move(change))};
  const std::lock_guard lock(mutex_);
  last_ = {last_.number + 1, std::make_shared<const std::string>(std::move(whole))};
  std::erase_if(listeners_, [](const auto& entry) { return entry.expired(); });
  for (const auto& item : listeners_) {
    if (const auto listener = item.lock()) give(*listener, event);
  }
}

Told Feed::last() const {
  const std::lock_guard lock(mutex_);
  return last_;
}

std::shared_ptr<Feed::Listener> Feed::listen(std::uint64_t since) {
  const std::lock_guard lock(mutex_);
  std::erase_if(listeners_, [](const auto& entry) { return entry.expired(); });
  if (closed_ || listeners_.size() >= kMostListeners) return nullptr;
  auto listener = std::make_shared<Listener>();
  if (since == 0 || since != last_.number) give(*listener, {"whole", last_.state});
  listeners_.push_back(listener);
  return listener;
}

void Feed::close() {
  const std::lock_guard lock(mutex_);
  closed_ = true;
  for (const auto& entry : listeners_) {
    const auto listener = entry.lock();
    if (!listener) continue;
    const std::lock_guard inner(listener->mutex_);
    listener->over_ = true;
    listener->arrived_.notify_all();
  }
}

}  // namespace kelvane::view
