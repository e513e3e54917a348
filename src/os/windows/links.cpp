#include "os/links.h"

#include <cstring>
#include <optional>
#include <vector>

#include "os/machine_path.h"
#include "os/surroundings.h"
#include "os/windows/native.h"
#include "os/windows_rules.h"
#include "text/encoding.h"

// Behind what it needs.
#include <winioctl.h>

namespace os {
namespace {

// Of what a link's data holds, as the system's documentation describes it (REPARSE_DATA_BUFFER).
struct LinkHead {
  ULONG tag;
  USHORT size, reserved;
  USHORT targetAt, targetSize, shownAt, shownSize;  // in bytes, from the end of the head
};
constexpr ULONG kRelative = 1;  // of the flags behind the head of a symbolic link

// Where a link leads, in the machine's form; nothing for another thing.
std::optional<std::string> targetOf(const std::string& path) {
  const Handle link(::CreateFileW(native(path).c_str(), FILE_READ_ATTRIBUTES, kShared, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  std::vector<char> data(16 * 1024);  // the most that the system keeps
  DWORD size = 0;
  if (!link || !::DeviceIoControl(link.get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, data.data(),
                                  static_cast<DWORD>(data.size()), &size, nullptr))
    return std::nullopt;
  LinkHead head{};
  std::memcpy(&head, data.data(), sizeof head);
  const bool isSymbolic = head.tag == IO_REPARSE_TAG_SYMLINK;
  if (!isSymbolic && head.tag != IO_REPARSE_TAG_MOUNT_POINT) return std::nullopt;
  ULONG flags = 0;
  if (isSymbolic) std::memcpy(&flags, data.data() + sizeof head, sizeof flags);
  const std::size_t at = sizeof head + (isSymbolic ? sizeof flags : 0) + head.targetAt;
  if (at + head.targetSize > size) return std::nullopt;
  std::wstring target(head.targetSize / sizeof(wchar_t), L'\0');
  std::memcpy(target.data(), data.data() + at, head.targetSize);
  if ((flags & kRelative) != 0) return withSlash(parentOf(path)) + text::toUtf8(windows::machineForm(target));
  constexpr std::wstring_view kSystems = L"\\??\\";  // as the kernel writes a whole path
  if (target.starts_with(kSystems)) target.replace(0, kSystems.size(), L"\\\\?\\");
  return machineOf(target);
}

// Without "." and "..", which are names where paths may be long.
std::string workedOut(const std::string& path) { return mounts().machine(mounts().system(path)); }

// As far as it is there behind all links, and the names of the rest.
std::string behind(const std::string& path, int mostLinks) {
  const Handle open(
      ::CreateFileW(native(path).c_str(), 0, kShared, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (open) {
    const std::string real = pathOf(open.get());
    return real.empty() ? path : real;
  }
  if (mostLinks > 0)
    if (const auto target = targetOf(path)) return behind(workedOut(*target), mostLinks - 1);
  const std::string parent = parentOf(path);
  if (parent == path || path.size() <= windows::rootLength(text::fromUtf8(path))) return path;
  return withSlash(behind(parent, mostLinks)) + std::string(lastName(path));
}

}  // namespace

std::string machineBehindLinks(std::wstring_view path) {
  constexpr int kMostLinks = 63;  // as the system follows
  return behind(mounts().machine(path), kMostLinks);
}

std::wstring behindLinks(std::wstring_view path) { return mounts().system(machineBehindLinks(path)); }

std::string machineItself(std::wstring_view path) {
  const std::string file = mounts().machine(path);
  if (file.size() <= windows::rootLength(text::fromUtf8(file))) return machineBehindLinks(path);
  return withSlash(machineBehindLinks(mounts().system(parentOf(file)))) + std::string(lastName(file));
}

std::error_code addName(std::wstring_view file, std::wstring_view name) {
  const std::string from = machineBehindLinks(file), to = mounts().machine(name);
  if (const auto error = judgePath(to)) return error;
  return ::CreateHardLinkW(native(to).c_str(), native(from).c_str(), nullptr) ? std::error_code{} : lastError();
}

}  // namespace os
