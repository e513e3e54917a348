#include "os/links.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <utility>

#include "os/paths.h"
#include "os/posix/errors.h"
#include "os/posix/guarded_place.h"
#include "os/posix/temporary_name.h"
#include "os/surroundings.h"

namespace os {
namespace {

namespace fs = std::filesystem;

thread_local const PlaceGuard* guarded = nullptr;

// Of an open file or folder; empty where the system doesn't tell.
std::string pathOf(int descriptor) {
  std::array<char, 4096> path{};
  const std::string entry = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t size = ::readlink(entry.c_str(), path.data(), path.size());
  return size > 0 ? std::string(path.data(), static_cast<std::size_t>(size)) : std::string();
}

std::string folderOfMachine(const std::string& path) { return fs::path(path).parent_path().string(); }

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

PlaceGuard::PlaceGuard(std::wstring_view path, std::string real)
    : given_(mounts().machine(path)), real_(std::move(real)), outer_(std::exchange(guarded, this)) {}
PlaceGuard::~PlaceGuard() { guarded = outer_; }

bool isAsGuarded(int descriptor, const std::string& path) {
  for (const PlaceGuard* guard = guarded; guard; guard = guard->outer_) {
    if (path == guard->given_ || path == guard->real_) return pathOf(descriptor) == guard->real_;
    // A temporary file beside it, which is then renamed to it.
    const std::string folder = folderOfMachine(path);
    const bool isBeside = folder == folderOfMachine(guard->given_) || folder == folderOfMachine(guard->real_);
    if (isBeside && isTemporaryName(fs::path(path).filename().string()))
      return folderOfMachine(pathOf(descriptor)) == folderOfMachine(guard->real_);
  }
  return true;
}

std::error_code addName(std::wstring_view file, std::wstring_view name) {
  const std::string from = mounts().machine(file), to = mounts().machine(name);
  return ::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0 ? std::error_code{}
                                                                                        : lastError();
}

}  // namespace os
