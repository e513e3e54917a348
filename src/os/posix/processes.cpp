#include "os/processes.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "os/surroundings.h"

namespace os {
namespace {

constexpr int kNoProgram = 127;  // as a shell says that it didn't find one

// Starts the desktop's opener in the background and ends, so that no ended child is left to this process.
constexpr const char* kScript =
    "command -v xdg-open >/dev/null 2>&1 || exit 127; xdg-open \"$1\" >/dev/null 2>&1 </dev/null &";

class MachineProcesses : public Processes {
 public:
  std::error_code open(std::wstring_view path) override {
    if (!files().exists(path)) return std::make_error_code(std::errc::no_such_file_or_directory);
    std::string script = kScript, target = mounts().machine(path), shell = "sh", command = "-c";
    const std::array<char*, 6> arguments = {shell.data(), command.data(), script.data(),
                                            shell.data(), target.data(),  nullptr};
    pid_t child = 0;
    if (const int error = ::posix_spawn(&child, "/bin/sh", nullptr, nullptr, arguments.data(), environ)) {
      return {error, std::generic_category()};
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
      if (errno != EINTR) return {errno, std::generic_category()};
    }
    const bool found = !(WIFEXITED(status) && WEXITSTATUS(status) == kNoProgram);
    return found ? std::error_code{} : std::make_error_code(std::errc::function_not_supported);
  }
};

}  // namespace

std::unique_ptr<Processes> machineProcesses() { return std::make_unique<MachineProcesses>(); }

}  // namespace os
