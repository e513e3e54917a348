#include "os/sockets.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "os/posix/errors.h"

namespace os {
namespace {

using std::chrono::milliseconds;
using Steady = std::chrono::steady_clock;

int number(Socket socket) { return static_cast<int>(socket); }
bool again() { return errno == EINTR || errno == EAGAIN; }

int milliseconds32(milliseconds time) { return static_cast<int>(std::clamp<long long>(time.count(), 0, 1 << 30)); }

// Whether the socket can do that within the time; a broken one can, and its next operation says so.
bool isReady(Socket socket, short what, milliseconds time) {
  pollfd entry{number(socket), what, 0};
  return ::poll(&entry, 1, milliseconds32(time)) > 0;
}

}  // namespace

Connection::~Connection() { ::close(number(socket_)); }

bool Connection::receive(std::string& into, std::size_t most) {
  std::array<char, 1 << 14> piece{};
  while (most > 0) {
    const ssize_t got = ::recv(number(socket_), piece.data(), std::min(piece.size(), most), MSG_DONTWAIT);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got < 0 && again();
    into.append(piece.data(), static_cast<std::size_t>(got));
    most -= static_cast<std::size_t>(got);
  }
  return true;
}

bool Connection::send(std::string_view bytes, milliseconds time) {
  const auto end = Steady::now() + time;
  while (!bytes.empty()) {
    const ssize_t sent = ::send(number(socket_), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(sent));
      continue;
    }
    if (!again()) return false;
    const auto left = std::chrono::ceil<milliseconds>(end - Steady::now());
    if (left.count() <= 0 || !isReady(socket_, POLLOUT, left)) return false;
  }
  return true;
}

void Connection::endSending() { ::shutdown(number(socket_), SHUT_WR); }

bool Connection::takesBytes(milliseconds time) const {
  char next = 0;
  const ssize_t got = ::recv(number(socket_), &next, 1, MSG_PEEK | MSG_DONTWAIT);
  const bool isThere = got > 0 || (got < 0 && again());
  return isThere && isReady(socket_, POLLOUT, time);
}

void letQueue(Socket listening, int count) { ::listen(number(listening), count); }

SocketWatch::SocketWatch() : bell_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  if (bell_ < 0) throw std::system_error(lastError());
}
SocketWatch::~SocketWatch() { ::close(number(bell_)); }

std::vector<bool> SocketWatch::wait(const std::vector<Socket>& sockets, milliseconds time) {
  std::vector<pollfd> entries = {{number(bell_), POLLIN, 0}};
  for (const Socket socket : sockets) entries.push_back({number(socket), POLLIN, 0});
  std::vector<bool> ready(sockets.size(), false);
  if (::poll(entries.data(), entries.size(), milliseconds32(time)) <= 0) return ready;
  std::uint64_t rings = 0;
  if (entries[0].revents != 0) static_cast<void>(::read(number(bell_), &rings, sizeof rings) == 0);
  for (std::size_t i = 0; i < sockets.size(); ++i) ready[i] = entries[i + 1].revents != 0;
  return ready;
}

void SocketWatch::wake() {
  const std::uint64_t ring = 1;
  static_cast<void>(::write(number(bell_), &ring, sizeof ring) == 0);  // where it is full it rings already
}

}  // namespace os
