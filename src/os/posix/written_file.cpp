#include "os/posix/written_file.h"

namespace os {

std::error_code flushOpen(const Descriptor& file) {
  return file.number() >= 0 && ::fsync(file.number()) == 0 ? std::error_code{} : lastError();
}

OpenWrittenFile::OpenWrittenFile(Descriptor file) : file_(std::move(file)) {
  struct stat found {};
  if (::fstat(file_.number(), &found) == 0) id_ = idOf(found);
}

std::error_code OpenWrittenFile::flush(const std::string& /*path*/) { return flushOpen(file_); }

bool OpenWrittenFile::isGone(const std::string& /*path*/) {
  struct stat found {};
  return ::fstat(file_.number(), &found) == 0 && found.st_nlink == 0;
}

Result<std::unique_ptr<WrittenFile>> writtenFile(const std::string& path) {
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.number() < 0) return {nullptr, lastError()};
  return {std::make_unique<OpenWrittenFile>(std::move(file)), {}};
}

std::error_code flushNames(const std::string& folder) {
  return flushOpen(Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)));
}

}  // namespace os
