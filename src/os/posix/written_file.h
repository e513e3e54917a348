// A file that waits for the disk, kept open so that it is found whatever its name.
#pragma once

#include "os/posix/descriptor.h"

namespace os {

class OpenWrittenFile : public WrittenFile {
 public:
  explicit OpenWrittenFile(Descriptor file);
  [[nodiscard]] FileId id() const override { return id_; }
  std::error_code flush(const std::string& path) override;
  bool isGone(const std::string& path) override;

 private:
  Descriptor file_;
  FileId id_;
};
// Returns when the disk has what is open.
std::error_code flushOpen(const Descriptor& file);

}  // namespace os
