#include "os/left_files.h"

#include <sys/types.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>

#include "os/posix/temporary_name.h"
#include "os/surroundings.h"

namespace os {
namespace {

// The process of ".kvd-4711-3.tmp"; 0 for any other name.
pid_t processOf(std::string_view name) {
  if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd)) return 0;
  pid_t process = 0;
  const char* const end = name.data() + name.size();
  const auto read = std::from_chars(name.data() + kTemporaryStart.size(), end, process);
  return read.ec == std::errc() && *read.ptr == '-' && process > 0 ? process : 0;
}

bool isAlive(pid_t process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

}  // namespace

void removeLeftTemporaries(std::wstring_view folder) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(mounts().machine(folder), error)) {
    const pid_t process = processOf(entry.path().filename().string());
    if (process != 0 && !isAlive(process)) std::filesystem::remove(entry.path(), error);
  }
}

}  // namespace os
