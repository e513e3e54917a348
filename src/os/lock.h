// Locks that keep two processes from working on the same thing.
#pragma once

#include <memory>
#include <string_view>

#include "os/result.h"

namespace os {

// Held until it is destroyed or the process ends, however it ends; the file is gone afterwards.
class FileLock {
 public:
  virtual ~FileLock() = default;
};
// Takes the lock of a file, which is made for it. device_or_resource_busy: another process, or another lock of this
// one, holds it; any other error: the file can't be made.
Result<std::unique_ptr<FileLock>> lockFile(std::wstring_view path);
}  // namespace os
