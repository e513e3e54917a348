#include "os/windows/native.h"

#include <algorithm>
#include <iterator>

#include "os/guarded_place.h"
#include "os/windows_rules.h"
#include "text/encoding.h"

namespace os {
namespace {

using std::errc;

constexpr DWORD kQuotaExceeded = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which not all headers have

struct Row {
  DWORD number;
  errc error;
};
constexpr Row kErrors[] = {
    {ERROR_FILE_NOT_FOUND, errc::no_such_file_or_directory},
    {ERROR_PATH_NOT_FOUND, errc::no_such_file_or_directory},
    {ERROR_INVALID_DRIVE, errc::no_such_file_or_directory},
    {ERROR_BAD_NETPATH, errc::no_such_file_or_directory},
    {ERROR_BAD_NET_NAME, errc::no_such_file_or_directory},
    {ERROR_BAD_PATHNAME, errc::no_such_file_or_directory},
    {ERROR_INVALID_NAME, errc::no_such_file_or_directory},
    {ERROR_DIRECTORY, errc::no_such_file_or_directory},
    {ERROR_NOT_READY, errc::no_such_file_or_directory},
    {ERROR_ACCESS_DENIED, errc::permission_denied},
    {ERROR_NETWORK_ACCESS_DENIED, errc::permission_denied},
    {ERROR_PRIVILEGE_NOT_HELD, errc::permission_denied},
    {ERROR_CANNOT_MAKE, errc::permission_denied},
    {ERROR_SHARING_VIOLATION, errc::device_or_resource_busy},
    {ERROR_LOCK_VIOLATION, errc::device_or_resource_busy},
    {ERROR_BUSY, errc::device_or_resource_busy},
    {ERROR_WRITE_PROTECT, errc::read_only_file_system},
    {ERROR_DISK_FULL, errc::no_space_on_device},
    {ERROR_HANDLE_DISK_FULL, errc::no_space_on_device},
    {kQuotaExceeded, errc::no_space_on_device},
    {ERROR_FILE_EXISTS, errc::file_exists},
    {ERROR_ALREADY_EXISTS, errc::file_exists},
    {ERROR_DIR_NOT_EMPTY, errc::directory_not_empty},
    {ERROR_NOT_SAME_DEVICE, errc::cross_device_link},
    {ERROR_FILENAME_EXCED_RANGE, errc::filename_too_long},
    {ERROR_TOO_MANY_OPEN_FILES, errc::too_many_files_open},
    {ERROR_NOT_ENOUGH_MEMORY, errc::not_enough_memory},
    {ERROR_OUTOFMEMORY, errc::not_enough_memory},
    {ERROR_INVALID_PARAMETER, errc::invalid_argument},
    {ERROR_NOT_SUPPORTED, errc::not_supported},
    {ERROR_INVALID_FUNCTION, errc::not_supported},
    {ERROR_BROKEN_PIPE, errc::broken_pipe},
    {ERROR_NO_DATA, errc::broken_pipe},
    {ERROR_BAD_EXE_FORMAT, errc::executable_format_error},
};

}  // namespace

std::error_code errorOf(DWORD number) {
  const auto* const row =
      std::find_if(std::begin(kErrors), std::end(kErrors), [number](const Row& r) { return r.number == number; });
  return std::make_error_code(row == std::end(kErrors) ? errc::io_error : row->error);
}

std::error_code Handle::write(std::string_view bytes) const {
  constexpr std::size_t kMost = std::size_t{1} << 26;  // a share takes no larger pieces
  while (!bytes.empty()) {
    DWORD written = 0;
    if (!::WriteFile(handle_, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMost)), &written, nullptr))
      return lastError();
    bytes.remove_prefix(written);
  }
  return {};
}

std::wstring native(std::string_view machine) { return windows::extended(text::fromUtf8(machine)); }

std::string machineOf(std::wstring_view native) { return text::toUtf8(windows::machineForm(native)); }

std::string pathOf(HANDLE file) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size = ::GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0);
    if (size == 0) return {};
    const bool isWhole = size < path.size();
    path.resize(size);
    if (isWhole) return machineOf(path);
  }
}

Found lookAt(HANDLE open) {
  Found found;
  if (!::GetFileInformationByHandle(open, &found.info)) {
    found.error = lastError();
    return found;
  }
  FILE_ATTRIBUTE_TAG_INFO tag{};
  const bool isSpecial = (found.info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  // Files that lie in a cloud or are packed have tags too, and are files all the same.
  if (isSpecial && ::GetFileInformationByHandleEx(open, FileAttributeTagInfo, &tag, sizeof tag))
    found.isLink = IsReparseTagNameSurrogate(tag.ReparseTag);
  return found;
}

namespace {

Found lookWith(const std::string& path, DWORD flags) {
  Found found;
  found.error = judgePath(path);
  if (found.error) return found;
  const Handle open(::CreateFileW(native(path).c_str(), FILE_READ_ATTRIBUTES, kShared, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
  if (open) return lookAt(open.get());
  found.error = lastError();
  return found;
}

}  // namespace

Found look(const std::string& path) { return lookWith(path, 0); }
Found lookAtLink(const std::string& path) { return lookWith(path, FILE_FLAG_OPEN_REPARSE_POINT); }

std::error_code judgePath(const std::string& path) {
  switch (windows::kindOfPath(text::fromUtf8(path))) {
    case windows::NameKind::plain:
      return {};
    case windows::NameKind::impossible:
      return std::make_error_code(errc::no_such_file_or_directory);
    case windows::NameKind::reserved:
    case windows::NameKind::stream:
      break;
  }
  return std::make_error_code(errc::operation_not_permitted);
}

Result<Handle> openPlain(const std::string& path, DWORD access, DWORD how) {
  Result<Handle> result;
  result.error = judgePath(path);
  if (result.error) return result;
  // The flag lets a folder be opened too, which is told as one then.
  result.value = Handle(::CreateFileW(native(path).c_str(), access | FILE_READ_ATTRIBUTES, kShared, nullptr, how,
                                      FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!result.value) {
    result.error = lastError();
    if (look(path).isFolder()) result.error = std::make_error_code(errc::is_a_directory);
    return result;
  }
  const HANDLE open = result.value.get();
  const Found found = lookAt(open);
  if (!isAsGuarded(path, [open] { return pathOf(open); }) || ::GetFileType(open) != FILE_TYPE_DISK) {
    result.error = std::make_error_code(errc::operation_not_permitted);
  } else if (found.error) {
    result.error = found.error;
  } else if (found.isFolder()) {
    result.error = std::make_error_code(errc::is_a_directory);
  } else if (access != GENERIC_READ && found.isProtected()) {
    result.error = std::make_error_code(errc::permission_denied);
  }
  return result;
}

}  // namespace os
