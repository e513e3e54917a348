#include "os/processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "os/gate.h"
#include "os/posix/command_line.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace os {
namespace {

// Starts the desktop's opener in the background and ends, so that no ended child is left to this process.
constexpr const char* kOpener =
    "command -v xdg-open >/dev/null 2>&1 || exit 127; xdg-open \"$1\" >/dev/null 2>&1 </dev/null &";

std::error_code systemError(int error) { return {error, std::generic_category()}; }

// What a child has in place of this process's folder and streams: it reads nothing, and what it prints is no result.
class ChildPlace {
 public:
  explicit ChildPlace(std::string folder) : folder_(std::move(folder)) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO);
    if (!folder_.empty()) ::posix_spawn_file_actions_addchdir_np(&actions_, folder_.c_str());
  }
  ~ChildPlace() { ::posix_spawn_file_actions_destroy(&actions_); }
  ChildPlace(const ChildPlace&) = delete;
  ChildPlace& operator=(const ChildPlace&) = delete;
  [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }

 private:
  std::string folder_;
  posix_spawn_file_actions_t actions_{};
};

// Runs a script of the shell to its end; its status, as a shell tells it. argument: its "$1".
Result<int> runScript(std::string script, std::string argument, std::string folder) {
  const ChildPlace place(std::move(folder));
  std::string shell = "sh", command = "-c";
  const std::array<char*, 6> arguments = {shell.data(), command.data(),  script.data(),
                                          shell.data(), argument.data(), nullptr};
  pid_t child = 0;
  if (const int error = ::posix_spawn(&child, "/bin/sh", place.actions(), nullptr, arguments.data(), environ))
    return {0, systemError(error)};
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return {0, systemError(errno)};
  }
  constexpr int kSignals = 128;  // a program that a signal ended
  return {WIFEXITED(status) ? WEXITSTATUS(status) : kSignals + WTERMSIG(status), {}};
}

bool isDocument(const std::string& path) {
  return ::access(path.c_str(), F_OK) == 0 && ::access(path.c_str(), X_OK) != 0;
}

class MachineProcesses : public Processes {
  // Asked here, as whoever opens nothing needs no grant for it.
  std::error_code doOpen(std::wstring_view path) override {
    if (Gate* const asked = gate())
      if (const auto error = asked->open(path)) return error;
    if (!files().exists(path)) return std::make_error_code(std::errc::no_such_file_or_directory);
    const Result<int> opened = runScript(kOpener, mounts().machine(path), {});
    if (opened && opened.value == kNoProgram) return std::make_error_code(std::errc::function_not_supported);
    return opened.error;
  }

  Result<int> doRun(std::wstring_view command, std::wstring_view folder) override {
    return runScript(shellCommand(command), {}, mounts().machine(folder));
  }

  std::error_code doStart(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) override {
    if (program.size() > 1 && program.front() == L'"' && program.back() == L'"')
      program = program.substr(1, program.size() - 2);
    const bool isName = program.find_first_of(L"\\/") == program.npos;
    const bool isWhole =
        program.starts_with(L'\\') || program.starts_with(L'/') || !splitDevice(program).device.empty();
    const std::wstring path = isWhole ? std::wstring(program) : joined(folder, program);
    const std::string target = isName ? std::string() : mounts().machine(path);
    if (isName && files().exists(path)) return doStart(path, arguments, folder);
    if (isDocument(target)) return doOpen(path);
    const std::string word = shellWord(isName ? text::toUtf8(program) : target);
    const std::string script = "command -v " + word + " >/dev/null 2>&1 || exit 127; { " + word + " " +
                               shellCommand(arguments) + "\n} >/dev/null 2>&1 </dev/null &";
    const Result<int> started = runScript(script, {}, mounts().machine(folder));
    if (!started) return started.error;
    if (started.value == kNoProgram) return std::make_error_code(std::errc::no_such_file_or_directory);
    return started.value == 0 ? std::error_code{} : std::make_error_code(std::errc::invalid_argument);
  }
};

}  // namespace

std::unique_ptr<Processes> machineProcesses() { return std::make_unique<MachineProcesses>(); }

}  // namespace os
