// Connections of a server: one thread watches many of them, and nothing is waited for beyond its time.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace os {

using Socket = std::intptr_t;  // as the system numbers them

// A stream that somebody has accepted; closed with the object.
class Connection {
 public:
  explicit Connection(Socket socket) : socket_(socket) {}
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  [[nodiscard]] Socket socket() const { return socket_; }

  // Adds what has come, at most so many bytes, without waiting. False: nothing more comes, as the other side has ended
  // the stream or it broke.
  bool receive(std::string& into, std::size_t most);
  // Sends all of it. False where the other side hasn't taken it within that time, or is gone.
  bool send(std::string_view bytes, std::chrono::milliseconds time);
  // What was sent still arrives, and nothing more comes behind it.
  void endSending();
  // Whether the other side is there and takes bytes within that time.
  [[nodiscard]] bool takesBytes(std::chrono::milliseconds time) const;

 private:
  Socket socket_;
};

// For a socket that listens: so many may come at once before somebody has accepted them. The system lets the rest try
// again, a second later.
void letQueue(Socket listening, int count);

// Waits until something has come.
class SocketWatch {
 public:
  SocketWatch();
  ~SocketWatch();
  SocketWatch(const SocketWatch&) = delete;
  SocketWatch& operator=(const SocketWatch&) = delete;
  // For each socket whether receive has something to say. All false when the time is over, or wake was called.
  std::vector<bool> wait(const std::vector<Socket>& sockets, std::chrono::milliseconds time);
  // Any thread: ends the wait of now, or else the next one.
  void wake();

 private:
  Socket bell_;
};

}  // namespace os
