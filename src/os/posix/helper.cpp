#include "os/helper.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <optional>

#include "os/posix/descriptor.h"
#include "os/posix/errors.h"
#include "os/posix/own_environment.h"

namespace os {
namespace {

using Steady = std::chrono::steady_clock;

// What is sent is its length, then its bytes. Length as the machine has it: both ends are one build.
using Length = std::uint64_t;
constexpr std::size_t kPiece = 1 << 16;

// One end of the wire. Nothing is waited for beyond the deadline, where there is one.
class Wire {
 public:
  explicit Wire(int descriptor) : descriptor_(descriptor) {}
  void until(Steady::time_point deadline) { deadline_ = deadline; }

  std::error_code send(std::string_view bytes) {
    const Length length = bytes.size();
    if (const auto error = sendAll({reinterpret_cast<const char*>(&length), sizeof length})) return error;
    return sendAll(bytes);
  }
  // Grows with what comes, so that a length alone takes no memory.
  Result<std::string> receive() {
    std::string head, bytes;
    if (const auto error = receiveInto(head, sizeof(Length))) return {{}, error};
    Length length = 0;
    std::memcpy(&length, head.data(), sizeof length);
    if (const auto error = receiveInto(bytes, length)) return {{}, error};
    return {std::move(bytes), {}};
  }

 private:
  std::error_code ready(short what) {
    pollfd entry{descriptor_, what, 0};
    while (true) {
      int wait = -1;
      if (deadline_) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline_ - Steady::now()).count();
        wait = static_cast<int>(std::clamp<long long>(left, 0, 1 << 30));
      }
      const int found = ::poll(&entry, 1, wait);
      if (found > 0) return {};
      if (found == 0) return std::make_error_code(std::errc::timed_out);
      if (errno != EINTR) return lastError();
    }
  }
  static bool again() { return errno == EINTR || errno == EAGAIN; }

  std::error_code sendAll(std::string_view bytes) {
    while (!bytes.empty()) {
      if (const auto error = ready(POLLOUT)) return error;
      const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
      if (sent < 0 && again()) continue;
      if (sent < 0) return std::make_error_code(std::errc::broken_pipe);
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return {};
  }
  std::error_code receiveInto(std::string& bytes, Length length) {
    std::array<char, kPiece> piece{};
    while (bytes.size() < length) {
      if (const auto error = ready(POLLIN)) return error;
      const std::size_t most = static_cast<std::size_t>(std::min<Length>(piece.size(), length - bytes.size()));
      const ssize_t got = ::recv(descriptor_, piece.data(), most, MSG_DONTWAIT);
      if (got < 0 && again()) continue;
      if (got <= 0) return std::make_error_code(std::errc::broken_pipe);
      bytes.append(piece.data(), static_cast<std::size_t>(got));
    }
    return {};
  }

  int descriptor_;
  std::optional<Steady::time_point> deadline_;
};

class RunningHelper : public Helper {
 public:
  RunningHelper(pid_t child, Descriptor wire) : child_(child), wire_(std::move(wire)) {}
  ~RunningHelper() override { end(); }

  Result<std::string> ask(std::string_view request, std::chrono::milliseconds time) override {
    if (child_ == 0) return {{}, std::make_error_code(std::errc::broken_pipe)};
    Wire wire(wire_.number());
    wire.until(Steady::now() + time);
    Result<std::string> answer{{}, wire.send(request)};
    if (!answer.error) answer = wire.receive();
    if (answer.error) end();
    return answer;
  }

 private:
  void end() {
    if (child_ == 0) return;
    ::kill(child_, SIGKILL);
    while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
    }
    child_ = 0;
  }

  pid_t child_;
  Descriptor wire_;
};

// How a helper begins: the wire is its standard input, what it prints goes nowhere, signals are as for any program, and
// it stands in a group of its own.
class HelperStart {
 public:
  explicit HelperStart(int wire) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_adddup2(&actions_, wire, STDIN_FILENO);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
      ::posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    ::posix_spawnattr_init(&attributes_);
    sigset_t none, all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setpgroup(&attributes_, 0);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  ~HelperStart() {
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
  }
  HelperStart(const HelperStart&) = delete;
  HelperStart& operator=(const HelperStart&) = delete;

  Result<pid_t> run(std::string program) {
    const std::array<char*, 2> arguments = {program.data(), nullptr};
    pid_t child = 0;
    const int error =
        ::posix_spawn(&child, program.c_str(), &actions_, &attributes_, arguments.data(), OwnEnvironment().entries());
    return {child, error ? std::error_code(error, std::generic_category()) : std::error_code()};
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

// The limit that a process meets; the one up to which it may raise that stays, so that each request has its own.
void limit(auto resource, rlim_t most) {
  rlimit present{};
  if (::getrlimit(resource, &present) != 0) return;
  present.rlim_cur = std::min(most, present.rlim_max);
  ::setrlimit(resource, &present);
}

// Pages of memory that this process may write to; nothing where the system doesn't tell.
std::optional<std::uint64_t> ownPages() {
  std::ifstream file("/proc/self/statm");
  std::uint64_t size = 0, resident = 0, shared = 0, code = 0, libraries = 0, data = 0;
  if (!(file >> size >> resident >> shared >> code >> libraries >> data)) return std::nullopt;
  return data;
}

}  // namespace

Result<std::unique_ptr<Helper>> startHelper(const std::string& program) {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return {nullptr, lastError()};
  Descriptor ours(ends[0]);
  const Descriptor theirs(ends[1]);
  const Result<pid_t> child = HelperStart(theirs.number()).run(program);
  if (!child) return {nullptr, child.error};
  return {std::make_unique<RunningHelper>(child.value, std::move(ours)), {}};
}

bool serveRequests(const std::function<std::string(std::string_view)>& answer) {
  struct stat input {};
  if (::fstat(STDIN_FILENO, &input) != 0 || !S_ISSOCK(input.st_mode)) return false;
  Wire wire(STDIN_FILENO);
  while (true) {
    const Result<std::string> request = wire.receive();
    if (!request || wire.send(answer(request.value))) return true;
  }
}

void limitThisProcess(std::uint64_t bytes, std::chrono::seconds processor) {
  // Only what comes on top counts: a checked build has reserved far more addresses than there is memory.
  if (const auto pages = ownPages())
    limit(RLIMIT_DATA, *pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)) + bytes);
  limit(RLIMIT_CORE, 0);  // what ends it leaves nothing behind
  rusage used{};
  ::getrusage(RUSAGE_SELF, &used);
  limit(RLIMIT_CPU, static_cast<rlim_t>(used.ru_utime.tv_sec + used.ru_stime.tv_sec + processor.count() + 1));
}

}  // namespace os
