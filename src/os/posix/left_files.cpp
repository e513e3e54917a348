#include "os/left_files.h"

#include <sys/types.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "os/surroundings.h"
#include "os/temporary_name.h"

namespace os {
namespace {

bool isAlive(pid_t process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

}  // namespace

void removeLeftTemporaries(std::wstring_view folder) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(mounts().machine(folder), error)) {
    const auto process = static_cast<pid_t>(processOfTemporary(entry.path().filename().string()));
    if (process > 0 && !isAlive(process)) std::filesystem::remove(entry.path(), error);
  }
}

}  // namespace os
