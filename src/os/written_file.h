// The system's part of bringing files to the disk (flush_behind.h).
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "os/result.h"

namespace os {

// Which file it is, whatever its name.
struct FileId {
  std::uint64_t disk = 0, number = 0;
  auto operator<=>(const FileId&) const = default;
};

// A file that has been written and waits for the disk.
class WrittenFile {
 public:
  virtual ~WrittenFile() = default;
  [[nodiscard]] virtual FileId id() const = 0;
  // Returns when the disk has it. path: the name that it has by now, in the machine's form.
  virtual std::error_code flush(const std::string& path) = 0;
  // Replaced or removed since it was written, so that nothing of that name needs the disk.
  virtual bool isGone(const std::string& path) = 0;
};
Result<std::unique_ptr<WrittenFile>> writtenFile(const std::string& path);
// The names in a folder.
std::error_code flushNames(const std::string& folder);

}  // namespace os
