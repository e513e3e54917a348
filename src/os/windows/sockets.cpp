#include "os/sockets.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <system_error>

namespace os {
namespace {

using std::chrono::milliseconds;
using Steady = std::chrono::steady_clock;

SOCKET number(Socket socket) { return static_cast<SOCKET>(socket); }
bool again() { return ::WSAGetLastError() == WSAEWOULDBLOCK || ::WSAGetLastError() == WSAEINTR; }

int milliseconds32(milliseconds time) { return static_cast<int>(std::clamp<long long>(time.count(), 0, 1 << 30)); }

// Whether the socket can do that within the time; a broken one can, and its next operation says so.
bool isReady(Socket socket, short what, milliseconds time) {
  WSAPOLLFD entry{number(socket), what, 0};
  return ::WSAPoll(&entry, 1, milliseconds32(time)) > 0;
}

// Nothing waits in the calls themselves: this system says so of a socket, and not of a call.
void neverWait(Socket socket) {
  u_long on = 1;
  ::ioctlsocket(number(socket), FIONBIO, &on);
}

// The system's own set-up, once a process.
void setUp() {
  static const int error = [] {
    WSADATA data{};
    return ::WSAStartup(MAKEWORD(2, 2), &data);
  }();
  if (error != 0) throw std::system_error(error, std::system_category());
}

// A socket that sends to itself: what is waited for is sockets alone.
Socket makeBell() {
  setUp();
  const SOCKET bell = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* const at = reinterpret_cast<sockaddr*>(&address);
  int size = sizeof address;
  const bool isMade = bell != INVALID_SOCKET && ::bind(bell, at, size) == 0 && ::getsockname(bell, at, &size) == 0 &&
                      ::connect(bell, at, size) == 0;
  if (!isMade) {
    const int error = ::WSAGetLastError();
    if (bell != INVALID_SOCKET) ::closesocket(bell);
    throw std::system_error(error, std::system_category());
  }
  neverWait(static_cast<Socket>(bell));
  return static_cast<Socket>(bell);
}

}  // namespace

Connection::~Connection() { ::closesocket(number(socket_)); }

bool Connection::receive(std::string& into, std::size_t most) {
  neverWait(socket_);
  std::array<char, 1 << 14> piece{};
  while (most > 0) {
    const int got = ::recv(number(socket_), piece.data(), static_cast<int>(std::min(piece.size(), most)), 0);
    if (got <= 0) return got < 0 && again();
    into.append(piece.data(), static_cast<std::size_t>(got));
    most -= static_cast<std::size_t>(got);
  }
  return true;
}

bool Connection::send(std::string_view bytes, milliseconds time) {
  neverWait(socket_);
  constexpr std::size_t kMost = 1 << 20;
  const auto end = Steady::now() + time;
  while (!bytes.empty()) {
    const int sent = ::send(number(socket_), bytes.data(), static_cast<int>(std::min(bytes.size(), kMost)), 0);
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

void Connection::endSending() { ::shutdown(number(socket_), SD_SEND); }

bool Connection::takesBytes(milliseconds time) const {
  neverWait(socket_);
  char next = 0;
  const int got = ::recv(number(socket_), &next, 1, MSG_PEEK);
  const bool isThere = got > 0 || (got < 0 && again());
  return isThere && isReady(socket_, POLLOUT, time);
}

void letQueue(Socket listening, int count) { ::listen(number(listening), count); }

SocketWatch::SocketWatch() : bell_(makeBell()) {}
SocketWatch::~SocketWatch() { ::closesocket(number(bell_)); }

std::vector<bool> SocketWatch::wait(const std::vector<Socket>& sockets, milliseconds time) {
  std::vector<WSAPOLLFD> entries = {{number(bell_), POLLIN, 0}};
  for (const Socket socket : sockets) entries.push_back({number(socket), POLLIN, 0});
  std::vector<bool> ready(sockets.size(), false);
  if (::WSAPoll(entries.data(), static_cast<ULONG>(entries.size()), milliseconds32(time)) <= 0) return ready;
  char ring = 0;
  while (entries[0].revents != 0 && ::recv(number(bell_), &ring, 1, 0) > 0) {
  }
  for (std::size_t i = 0; i < sockets.size(); ++i) ready[i] = entries[i + 1].revents != 0;
  return ready;
}

void SocketWatch::wake() {
  const char ring = 1;
  ::send(number(bell_), &ring, 1, 0);  // where it is full it rings already
}

}  // namespace os
