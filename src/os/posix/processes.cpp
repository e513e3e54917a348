#include "os/processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>
#include <vector>

#include "os/posix/command_line.h"
#include "os/surroundings.h"

namespace os {
namespace {

constexpr int kNoProgram = 127;  // as a shell says that it didn't find one
constexpr int kSignalled = 128;  // and the signal's number

// Starts the desktop's opener in the background and ends, so that no ended child is left to this process.
constexpr const char* kScript =
    "command -v xdg-open >/dev/null 2>&1 || exit 127; xdg-open \"$1\" >/dev/null 2>&1 </dev/null &";

// Starts a program and waits for its end. Its input is empty, and what it writes goes to standard error.
Result<int> ended(std::initializer_list<std::string> words) {
  std::vector<std::string> kept(words);
  std::vector<char*> arguments;
  for (std::string& word : kept) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
  pid_t child = 0;
  const int error = ::posix_spawn(&child, "/bin/sh", &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) return {0, {error, std::generic_category()}};
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return {0, {errno, std::generic_category()}};
  }
  return {WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status), {}};
}

class MachineProcesses : public Processes {
 public:
  std::error_code open(std::wstring_view path) override {
    if (!files().exists(path)) return std::make_error_code(std::errc::no_such_file_or_directory);
    const auto status = ended({"sh", "-c", kScript, "sh", mounts().machine(path)});
    if (!status) return status.error;
    return status.value == kNoProgram ? std::make_error_code(std::errc::function_not_supported) : std::error_code{};
  }
  Result<int> run(std::wstring_view command) override { return ended({"sh", "-c", shellCommand(command)}); }
};

}  // namespace

std::unique_ptr<Processes> machineProcesses() { return std::make_unique<MachineProcesses>(); }

}  // namespace os
