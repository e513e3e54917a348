// What is told to the pages: the whole state, which each page gets first, and every change after that.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "kelvane/ui/inbox.h"

namespace kelvane::view {

// An event of the stream: "whole" or "change", and a line of JSON.
struct Event {
  const char* name = "";
  std::shared_ptr<const std::string> data;
};

// The whole state, and how many have been told until then.
struct Told {
  std::uint64_t number = 0;
  std::shared_ptr<const std::string> state;
};

class Feed {
 public:
  // One page that listens.
  class Listener {
   public:
    // The next event; nothing when the time is over, or nothing more comes.
    std::optional<Event> next(milliseconds patience);
    // True when nothing more comes: the session ends, or the page fell too far behind and has to begin anew.
    [[nodiscard]] bool over();

   private:
    friend class Feed;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Event> events_;
    std::size_t bytes_ = 0;
    bool over_ = false;
  };

  // The session's thread tells the state as it is now and what of it is new.
  void tell(std::string whole, std::string change);
  // Any thread. The state that was told last.
  [[nodiscard]] Told last() const;
  // Any thread. Null where too many listen, or the session ends. The state comes as the first event, unless it is still
  // the one of number `since`, which the page has.
  std::shared_ptr<Listener> listen(std::uint64_t since);
  void close();

 private:
  static void give(Listener& listener, const Event& event);

  mutable std::mutex mutex_;
  Told last_ = {0, std::make_shared<const std::string>("{}")};
  std::vector<std::weak_ptr<Listener>> listeners_;
  bool closed_ = false;
};

}  // namespace kelvane::view
