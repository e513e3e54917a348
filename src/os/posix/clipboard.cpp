#include "os/clipboard.h"

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "os/posix/own_environment.h"
#include "text/encoding.h"

namespace os {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostBytes = 1 << 20;
constexpr auto kPatience = std::chrono::seconds(2);  // the program that copied the text may have stopped answering

// The helper that prints the clipboard; null without a display.
const char* script(const OwnEnvironment& environment) {
  if (environment.holds("WAYLAND_DISPLAY")) return "exec wl-paste --no-newline --type text 2>/dev/null </dev/null";
  if (environment.holds("DISPLAY")) return "exec xclip -out -selection clipboard 2>/dev/null </dev/null";
  return nullptr;
}

// A child process with its output in a pipe; gone with the object.
class Child {
 public:
  Child(std::string command, OwnEnvironment& environment) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return;
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    for (const int end : ends) ::posix_spawn_file_actions_addclose(&actions, end);
    std::string shell = "sh", option = "-c";
    const std::array<char*, 4> arguments = {shell.data(), option.data(), command.data(), nullptr};
    if (::posix_spawn(&id_, "/bin/sh", &actions, nullptr, arguments.data(), environment.entries()) != 0) id_ = 0;
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    output_ = ends[0];
  }
  ~Child() {
    if (output_ >= 0) ::close(output_);
    if (id_ > 0) {
      ::kill(id_, SIGKILL);
      (void)wait();
    }
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // All that it prints, once it has ended well.
  std::optional<std::string> output() {
    if (id_ <= 0) return std::nullopt;
    std::string all;
    std::array<char, 4096> piece{};
    const auto end = Clock::now() + kPatience;
    for (;;) {
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
      if (left <= 0 || all.size() > kMostBytes) return std::nullopt;
      pollfd waited{output_, POLLIN, 0};
      const int ready = ::poll(&waited, 1, static_cast<int>(left));
      if (ready < 0 && errno != EINTR) return std::nullopt;
      if (ready <= 0) continue;
      const ssize_t got = ::read(output_, piece.data(), piece.size());
      if (got == 0) break;
      if (got < 0 && errno != EINTR) return std::nullopt;
      if (got > 0) all.append(piece.data(), static_cast<std::size_t>(got));
    }
    const int status = wait();
    id_ = 0;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
    return all;
  }

 private:
  [[nodiscard]] int wait() const {
    int status = -1;
    while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
  }

  pid_t id_ = 0;
  int output_ = -1;
};

class MachineClipboard : public Clipboard {
 public:
  std::optional<std::wstring> text() override {
    // A list that sets the display, or where programs lie, starts none by that.
    OwnEnvironment environment;
    const char* command = script(environment);
    if (!command) return std::nullopt;
    const auto bytes = Child(command, environment).output();
    if (!bytes || !text::isUtf8(*bytes)) return std::nullopt;
    return text::fromUtf8(*bytes);
  }
};

}  // namespace

std::unique_ptr<Clipboard> machineClipboard() { return std::make_unique<MachineClipboard>(); }

}  // namespace os
