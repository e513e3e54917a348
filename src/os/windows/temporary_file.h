// A file beside its target that is gone again unless it took the target's name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "os/flush_behind.h"
#include "os/windows/native.h"

namespace os {

class TemporaryFile {
 public:
  // folder: in the machine's form.
  explicit TemporaryFile(std::string folder) : folder_(std::move(folder)) {}
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // target: what it will replace, null for nothing; it gives its attributes, its permissions and the time at which it
  // was made. The content is on the disk behind it, unless that may come behind the name.
  std::error_code fill(std::string_view bytes, const std::string* target, const Found& old);
  // Replaces it. A file that another program holds for longer than two seconds is device_or_resource_busy or
  // permission_denied, and stays whole.
  std::error_code become(const std::string& target, const Found& old);
  // file_exists where something has that name.
  std::error_code becomeNew(const std::string& target);

 private:
  std::error_code make(Handle& file);
  std::error_code moveTo(const std::string& target, DWORD flags, std::optional<FileId> old);

  std::string folder_, path_;
  FlushTime flushTime_ = FlushTime::beforeName;
};

}  // namespace os
