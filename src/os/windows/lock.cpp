#include "os/lock.h"

#include "os/surroundings.h"
#include "os/windows/native.h"

namespace os {
namespace {

// The system removes the file when it is closed, whoever closes it.
class HeldLock : public FileLock {
 public:
  explicit HeldLock(Handle file) : file_(std::move(file)) {}

 private:
  Handle file_;
};

}  // namespace

Result<std::unique_ptr<FileLock>> lockFile(std::wstring_view path) {
  const std::string name = mounts().machine(path);
  const Found found = lookAtLink(name);
  if (found.error && found.error != std::errc::no_such_file_or_directory) return {nullptr, found.error};
  if (found.isLink) return {nullptr, std::make_error_code(std::errc::too_many_symbolic_link_levels)};
  if (found.isFolder()) return {nullptr, std::make_error_code(std::errc::is_a_directory)};
  Handle file(::CreateFileW(native(name).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                            FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  if (file) return {std::make_unique<HeldLock>(std::move(file)), {}};
  return {nullptr, lastError()};
}

}  // namespace os
