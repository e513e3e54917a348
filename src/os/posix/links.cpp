#include "os/links.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "os/paths.h"
#include "os/posix/errors.h"
#include "os/surroundings.h"

namespace os {

namespace fs = std::filesystem;

std::wstring behindLinks(std::wstring_view path) {
  constexpr int kMostLinks = 40;  // as the system follows
  std::error_code error;
  fs::path file = mounts().machine(path);
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(file, error)); ++i)
    file = file.parent_path() / fs::read_symlink(file, error);
  const fs::path whole = fs::weakly_canonical(file, error);
  return mounts().system((error ? file : whole).string());
}

std::error_code addName(std::wstring_view file, std::wstring_view name) {
  const std::string from = mounts().machine(file), to = mounts().machine(name);
  return ::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0 ? std::error_code{}
                                                                                        : lastError();
}

}  // namespace os
