// An open file of the machine, closed on every path.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "os/guarded_place.h"
#include "os/posix/errors.h"
#include "os/result.h"
#include "os/written_file.h"

namespace os {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& from) noexcept : number_(std::exchange(from.number_, -1)) {}
  Descriptor& operator=(Descriptor&& from) noexcept {
    std::swap(number_, from.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  [[nodiscard]] int number() const { return number_; }

  // Closes now, as a file system may report a failed write only here.
  std::error_code close() { return ::close(std::exchange(number_, -1)) == 0 ? std::error_code{} : lastError(); }

  [[nodiscard]] std::error_code write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t written = ::write(number_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return lastError();
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
  }

 private:
  int number_ = -1;
};

// Protected for everybody. An administrator could write it all the same; a person who protects a file means all.
inline bool isWriteProtected(const struct stat& info) { return (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0; }

inline FileId idOf(const struct stat& info) { return {info.st_dev, info.st_ino}; }

// The path of what is open; empty where the system doesn't tell.
inline std::string pathOf(int descriptor) {
  std::array<char, 4096> path{};
  const std::string entry = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t size = ::readlink(entry.c_str(), path.data(), path.size());
  return size > 0 ? std::string(path.data(), static_cast<std::size_t>(size)) : std::string();
}
// Is it what a guard of that path has judged?
inline bool isAsGuarded(int descriptor, const std::string& path) {
  return isAsGuarded(path, [descriptor] { return pathOf(descriptor); });
}

// Opens a plain file. Folders are is_a_directory; pipes and devices are refused, and never waited for.
inline Result<Descriptor> openPlain(const std::string& path, int flags) {
  Result<Descriptor> result{Descriptor(::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666)), {}};
  if (result.value.number() < 0) {
    result.error = lastError();
    return result;
  }
  struct stat found {};
  const bool isGuarded = isAsGuarded(result.value.number(), path);
  if (isGuarded && ::fstat(result.value.number(), &found) != 0) {
    result.error = lastError();
  } else if (isGuarded && S_ISDIR(found.st_mode)) {
    result.error = std::make_error_code(std::errc::is_a_directory);
  } else if (!isGuarded || !S_ISREG(found.st_mode)) {
    result.error = std::make_error_code(std::errc::operation_not_permitted);
  } else if ((flags & O_ACCMODE) != O_RDONLY && isWriteProtected(found)) {
    result.error = std::make_error_code(std::errc::permission_denied);
  }
  return result;
}

}  // namespace os
