#include "os/executable.h"

#include <sys/stat.h>

#include "os/posix/errors.h"
#include "os/surroundings.h"

namespace os {

std::error_code makeExecutable(std::wstring_view path) {
  const std::string file = mounts().machine(path);
  struct stat found {};
  if (::stat(file.c_str(), &found) != 0) return lastError();
  const mode_t readers = found.st_mode & (S_IRUSR | S_IRGRP | S_IROTH);
  return ::chmod(file.c_str(), (found.st_mode & 07777) | (readers >> 2)) == 0 ? std::error_code{} : lastError();
}

std::string executableName(std::string_view program) { return std::string(program); }

}  // namespace os
