#include "os/lock.h"

#include <sys/file.h>

#include "os/posix/descriptor.h"
#include "os/surroundings.h"

namespace os {
namespace {

class HeldLock : public FileLock {
 public:
  HeldLock(Descriptor file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}
  // Removed while it is held: who waits for the old file sees that it is no longer the one of that name.
  ~HeldLock() override { ::unlink(path_.c_str()); }

 private:
  Descriptor file_;
  std::string path_;
};

// True when the open file is still the one of that name.
bool isStill(int file, const std::string& path) {
  struct stat open {};
  struct stat named {};
  return ::fstat(file, &open) == 0 && ::stat(path.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
         open.st_dev == named.st_dev;
}

}  // namespace

Result<std::unique_ptr<FileLock>> lockFile(std::wstring_view path) {
  const std::string name = mounts().machine(path);
  for (;;) {
    Descriptor file(::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644));
    if (file.number() < 0) return {nullptr, lastError()};
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
      if (errno == EWOULDBLOCK) return {nullptr, std::make_error_code(std::errc::device_or_resource_busy)};
      return {nullptr, lastError()};
    }
    if (isStill(file.number(), name)) return {std::make_unique<HeldLock>(std::move(file), name), {}};
  }
}

}  // namespace os
