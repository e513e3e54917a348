#include "os/links.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "os/paths.h"
#include "os/posix/errors.h"
#include "os/surroundings.h"

namespace os {
namespace {

namespace fs = std::filesystem;

}  // namespace

std::string machineBehindLinks(std::wstring_view path) {
  constexpr int kMostLinks = 40;  // as the system follows
  std::error_code error;
  fs::path file = mounts().machine(path);
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(file, error)); ++i)
    file = file.parent_path() / fs::read_symlink(file, error);
  const fs::path whole = fs::weakly_canonical(file, error);
  std::string found = (error ? file : whole).string();
  while (found.size() > 1 && found.ends_with('/')) found.pop_back();
  return found;
}

std::wstring behindLinks(std::wstring_view path) { return mounts().system(machineBehindLinks(path)); }

std::string machineItself(std::wstring_view path) {
  const fs::path file = mounts().machine(path);
  if (!file.has_filename()) return machineBehindLinks(path);
  const std::string folder = machineBehindLinks(mounts().system(file.parent_path().string()));
  return (fs::path(folder) / file.filename()).string();
}

std::error_code addName(std::wstring_view file, std::wstring_view name) {
  const std::string from = mounts().machine(file), to = mounts().machine(name);
  return ::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0 ? std::error_code{}
                                                                                        : lastError();
}

}  // namespace os
