// Where connections wait until a request of theirs is whole: on one thread for all of them, so that one that sends
// slowly, or nothing, holds none of the threads that answer.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "kelvane/ui/inbox.h"
#include "os/sockets.h"

namespace kelvane::view {

// What a connection may take. All peers are programs of this machine, so that connections are counted as a whole.
struct Bounds {
  std::size_t threads = 32;       // that answer; each page's stream has one
  std::size_t connections = 200;  // with one more, that one goes whose request has been waited for longest
  std::size_t line = 2U << 10U;   // bytes of a request's first line
  std::size_t head = 16U << 10U;  // bytes of a request without its body
  std::size_t body = 64U << 10U;  // bytes
  std::size_t requests = 1'000;   // then it is closed
  milliseconds request{10'000};   // from the begin of the connection, or a later request's first byte, to its last
  milliseconds idle{30'000};      // between two requests
  milliseconds piece{5'000};      // until a piece of an answer has been taken
};

// What the first bytes of a connection say of its request.
struct RequestForm {
  int refused = 0;         // the status of the answer that ends the connection; 0: none
  std::size_t length = 0;  // bytes of the whole request, once its head is whole
};
RequestForm requestForm(std::string_view received, const Bounds& bounds);

class Entrance {
 public:
  // Answers a whole request, on one of the threads. last: the answer says that the connection is closed behind it.
  // False where nothing more may be asked on it.
  using Answer = std::function<bool(os::Connection& connection, std::string_view request, bool last)>;

  Entrance(Bounds bounds, Answer answer);
  ~Entrance();  // waits for the answers that are being given, and closes all connections
  Entrance(const Entrance&) = delete;
  Entrance& operator=(const Entrance&) = delete;

  // Any thread: a connection that has been accepted.
  void take(os::Socket socket);

 private:
  struct Guest {
    explicit Guest(os::Socket socket) : connection(socket) {}
    os::Connection connection;
    std::string received;
    std::size_t length = 0;    // of its request; 0: not known yet
    std::size_t requests = 0;  // answered
    Clock::time_point since, until;
    bool refused = false;  // it only stays until it has read why
  };
  using GuestPtr = std::unique_ptr<Guest>;

  void watchDoor();
  // False: it ends.
  bool admit(std::vector<GuestPtr>& guests);
  // What has come is looked at; who has a whole request, or nothing to wait for, leaves a null.
  void look(GuestPtr& guest);
  void refuse(Guest& guest, int status) const;
  void give(GuestPtr guest);
  void answerRequests();
  GuestPtr nextToAnswer();

  const Bounds bounds_;
  const Answer answer_;
  os::SocketWatch watch_;
  std::mutex mutex_;
  std::condition_variable whole_;
  std::vector<GuestPtr> arriving_;     // new, or back from an answer
  std::deque<GuestPtr> answerable_;    // with a whole request
  std::atomic<std::size_t> away_ = 0;  // those with a whole request, until it has been answered
  bool over_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace kelvane::view
