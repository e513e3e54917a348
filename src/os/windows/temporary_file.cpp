#include "os/windows/temporary_file.h"

#include <atomic>
#include <vector>

#include "os/guarded_place.h"
#include "os/machine_path.h"
#include "os/temporary_name.h"

namespace os {
namespace {

// Who may do what with a file; empty where its disk knows no such thing.
using Permissions = std::vector<std::byte>;
Result<Permissions> permissionsOf(const std::string& path) {
  Result<Permissions> found;
  DWORD size = 1024;
  for (;;) {
    found.value.resize(size);
    if (::GetFileSecurityW(native(path).c_str(), DACL_SECURITY_INFORMATION, found.value.data(), size, &size)) break;
    const DWORD error = ::GetLastError();
    if (error == ERROR_INSUFFICIENT_BUFFER && size > found.value.size()) continue;
    found.value.clear();
    if (error != ERROR_NOT_SUPPORTED && error != ERROR_INVALID_FUNCTION) found.error = errorOf(error);
    return found;
  }
  found.value.resize(::GetSecurityDescriptorLength(found.value.data()));
  return found;
}

// A new file has those of its folder: mostly the same, and there is nothing to do.
std::error_code copyPermissions(const std::string& from, const std::string& to) {
  Result<Permissions> wanted = permissionsOf(from);
  if (!wanted) return wanted.error;
  const Result<Permissions> present = permissionsOf(to);
  if (wanted.value.empty() || (present && present.value == wanted.value)) return {};
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  SECURITY_INFORMATION what = DACL_SECURITY_INFORMATION;
  if (::GetSecurityDescriptorControl(wanted.value.data(), &control, &revision))
    what |= (control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION
                                               : UNPROTECTED_DACL_SECURITY_INFORMATION;
  return ::SetFileSecurityW(native(to).c_str(), what, wanted.value.data()) ? std::error_code{} : lastError();
}

// Those that a person sets; what the disk itself keeps, as compression, a file has by its folder.
constexpr DWORD kCopied =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

// Zero in a time leaves it as it is.
std::error_code copyAttributes(const Handle& file, const Found& from) {
  FILE_BASIC_INFO basic{};
  basic.CreationTime.LowPart = from.info.ftCreationTime.dwLowDateTime;
  basic.CreationTime.HighPart = static_cast<LONG>(from.info.ftCreationTime.dwHighDateTime);
  const DWORD attributes = from.info.dwFileAttributes & kCopied;
  basic.FileAttributes = attributes != 0 ? attributes : DWORD{FILE_ATTRIBUTE_NORMAL};
  return ::SetFileInformationByHandle(file.get(), FileBasicInfo, &basic, sizeof basic) ? std::error_code{}
                                                                                       : lastError();
}

}  // namespace

TemporaryFile::~TemporaryFile() {
  if (!path_.empty()) static_cast<void>(patiently([this] { return ::DeleteFileW(native(path_).c_str()) != 0; }));
}

std::error_code TemporaryFile::make(Handle& file) {
  static std::atomic<unsigned> counter{0};
  while (!file) {
    std::string path = withSlash(folder_) + temporaryName(::GetCurrentProcessId(), counter++);
    file = Handle(::CreateFileW(native(path).c_str(), GENERIC_WRITE | DELETE | FILE_READ_ATTRIBUTES, kShared, nullptr,
                                CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD error = file ? ERROR_SUCCESS : ::GetLastError();
    if (error != ERROR_SUCCESS && error != ERROR_FILE_EXISTS) return errorOf(error);
    if (file) path_ = std::move(path);
  }
  const HANDLE open = file.get();
  if (isAsGuarded(path_, [open] { return pathOf(open); })) return {};
  return std::make_error_code(std::errc::operation_not_permitted);
}

std::error_code TemporaryFile::fill(std::string_view bytes, const std::string* target, const Found& old) {
  const FileId oldId = old.id();
  flushTime_ = flushTime(target ? &oldId : nullptr);
  Handle file;
  if (const auto error = make(file)) return error;
  if (const auto error = file.write(bytes)) return error;
  if (target) {
    if (const auto error = copyPermissions(*target, path_)) return error;
    if (const auto error = copyAttributes(file, old)) return error;
  }
  if (flushTime_ == FlushTime::beforeName) {
    const auto onDisk = [&file] { return ::FlushFileBuffers(file.get()) ? std::error_code{} : lastError(); };
    if (const auto error = flushed(path_, onDisk)) return error;
  }
  return file.close();
}

std::error_code TemporaryFile::become(const std::string& target, const Found& old) {
  return moveTo(target, MOVEFILE_REPLACE_EXISTING, old.isThere() ? std::optional(old.id()) : std::nullopt);
}

std::error_code TemporaryFile::becomeNew(const std::string& target) { return moveTo(target, 0, {}); }

std::error_code TemporaryFile::moveTo(const std::string& target, DWORD flags, std::optional<FileId> old) {
  if (flushTime_ == FlushTime::beforeName) flags |= MOVEFILE_WRITE_THROUGH;
  const std::wstring from = native(path_), to = native(target);
  if (const auto error = patiently([&] { return ::MoveFileExW(from.c_str(), to.c_str(), flags) != 0; })) return error;
  path_.clear();
  if (flushTime_ != FlushTime::behind) {
    flushFolder(folder_, flushTime_);
    return {};
  }
  auto written = writtenFile(target);
  if (written) flushBehind(std::move(written.value), target, old ? &*old : nullptr);
  return {};
}

}  // namespace os
