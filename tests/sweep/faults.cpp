// The linker leads our own calls of these functions here (--wrap); those of libraries go where they went.
#include "sweep/faults.h"

#include <fcntl.h>
#include <sys/types.h>

#include <array>
#include <cerrno>
#include <cstdarg>

namespace sweep {
namespace {

Asked*& asked() {
  static Asked* one = nullptr;
  return one;
}

// True: the call fails, and errno says why.
bool fails(std::string_view call, std::span<const int> codes) {
  Asked* const one = asked();
  if (!one) return false;
  const int saved = errno;
  const int code = one->pass(call, codes);
  errno = code != 0 ? code : saved;
  return code != 0;
}

constexpr std::array kReading{EIO};
constexpr std::array kWriting{ENOSPC, EIO};

}  // namespace

void watchFiles(Asked* one) { asked() = one; }

}  // namespace sweep

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's names
extern "C" {

int __real_open(const char* path, int flags, ...);
ssize_t __real_read(int file, void* bytes, size_t count);
ssize_t __real_write(int file, const void* bytes, size_t count);
int __real_fsync(int file);
int __real_rename(const char* from, const char* to);
int __real_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags);
int __real_link(const char* from, const char* to);
int __real_unlink(const char* path);
int __real_mkdir(const char* path, mode_t mode);

int __wrap_open(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list more;
    va_start(more, flags);
    mode = va_arg(more, mode_t);
    va_end(more);
  }
  const bool makes = (flags & O_CREAT) != 0;
  if (makes ? sweep::fails("open", sweep::kWriting) : sweep::fails("open", sweep::kReading)) return -1;
  return __real_open(path, flags, mode);
}
ssize_t __wrap_read(int file, void* bytes, size_t count) {
  return sweep::fails("read", sweep::kReading) ? -1 : __real_read(file, bytes, count);
}
ssize_t __wrap_write(int file, const void* bytes, size_t count) {
  return sweep::fails("write", sweep::kWriting) ? -1 : __real_write(file, bytes, count);
}
int __wrap_fsync(int file) { return sweep::fails("fsync", sweep::kWriting) ? -1 : __real_fsync(file); }
int __wrap_rename(const char* from, const char* to) {
  return sweep::fails("rename", sweep::kWriting) ? -1 : __real_rename(from, to);
}
int __wrap_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
  return sweep::fails("rename", sweep::kWriting) ? -1 : __real_renameat2(fromFolder, from, toFolder, to, flags);
}
int __wrap_link(const char* from, const char* to) {
  return sweep::fails("link", sweep::kWriting) ? -1 : __real_link(from, to);
}
int __wrap_unlink(const char* path) { return sweep::fails("unlink", sweep::kReading) ? -1 : __real_unlink(path); }
int __wrap_mkdir(const char* path, mode_t mode) {
  return sweep::fails("mkdir", sweep::kWriting) ? -1 : __real_mkdir(path, mode);
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
