// Files that wait for the disk aren't kept open: another program that wants one for itself would be refused. They are
// opened again for the moment of the flush, if they are still the same.
#include "os/written_file.h"

#include "os/flush.h"
#include "os/surroundings.h"
#include "os/windows/native.h"

namespace os {
namespace {

class NamedWrittenFile : public WrittenFile {
 public:
  explicit NamedWrittenFile(FileId id) : id_(id) {}
  [[nodiscard]] FileId id() const override { return id_; }

  std::error_code flush(const std::string& path) override {
    Handle file;
    const auto error = patiently([&] {
      file = Handle(::CreateFileW(native(path).c_str(), GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING, 0, nullptr));
      return static_cast<bool>(file);
    });
    if (error) return isGone(path) ? std::error_code{} : error;
    if (lookAt(file.get()).id() != id_) return {};
    return ::FlushFileBuffers(file.get()) ? std::error_code{} : lastError();
  }

  bool isGone(const std::string& path) override {
    const Found found = lookAtLink(path);
    return found.isThere() ? found.id() != id_ : found.error == std::errc::no_such_file_or_directory;
  }

 private:
  FileId id_;
};

}  // namespace

Result<std::unique_ptr<WrittenFile>> writtenFile(const std::string& path) {
  const Found found = look(path);
  if (found.error) return {nullptr, found.error};
  return {std::make_unique<NamedWrittenFile>(found.id()), {}};
}

// Names are written ahead by the file systems of this system, and a folder knows no flush.
std::error_code flushNames(const std::string& /*folder*/) { return {}; }

std::error_code flushToDisk(std::wstring_view path) {
  const std::string file = mounts().machine(path);
  const Found found = look(file);
  if (found.error) return found.error;
  if (found.isFolder()) return flushNames(file);
  const auto open = openPlain(file, GENERIC_WRITE, OPEN_EXISTING);
  if (open.error) return open.error;
  return ::FlushFileBuffers(open.value.get()) ? std::error_code{} : lastError();
}

}  // namespace os
