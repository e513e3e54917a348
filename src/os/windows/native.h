// What all bodies of this folder need: handles, errors, and paths as the system's functions take them.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "os/result.h"
#include "os/written_file.h"

namespace os {

// One of the errors that this layer promises.
std::error_code errorOf(DWORD number);
inline std::error_code lastError() { return errorOf(::GetLastError()); }

// Something of the system's that is open; closed on every path.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  Handle(Handle&& from) noexcept : handle_(std::exchange(from.handle_, nullptr)) {}
  Handle& operator=(Handle&& from) noexcept {
    std::swap(handle_, from.handle_);
    return *this;
  }
  ~Handle() {
    if (handle_) ::CloseHandle(handle_);
  }
  explicit operator bool() const { return handle_ != nullptr; }
  [[nodiscard]] HANDLE get() const { return handle_; }
  // Closes now, as a file system may report a failed write only here.
  std::error_code close() { return ::CloseHandle(std::exchange(handle_, nullptr)) ? std::error_code{} : lastError(); }
  [[nodiscard]] std::error_code write(std::string_view bytes) const;

 private:
  HANDLE handle_ = nullptr;
};

// A path of the machine's form ("C:/models/a.prt", UTF-8) for the system's functions, however long, and back.
std::wstring native(std::string_view machine);
std::string machineOf(std::wstring_view native);
// Of what is open, behind all links, in the machine's form; empty where the system doesn't tell.
std::string pathOf(HANDLE file);

// Where everybody may do with a file what they want while this process has it open: rename and remove it, too.
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// What has a name. A junction is a link, as a symbolic link is.
struct Found {
  BY_HANDLE_FILE_INFORMATION info{};
  bool isLink = false;
  std::error_code error;
  [[nodiscard]] bool isFolder() const { return !error && !isLink && isOfFolder(); }
  // A link to a folder is removed as one.
  [[nodiscard]] bool isOfFolder() const { return (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  [[nodiscard]] bool isProtected() const { return (info.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0; }
  [[nodiscard]] bool isThere() const { return !error; }
  [[nodiscard]] FileId id() const {
    return {info.dwVolumeSerialNumber, (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow};
  }
  [[nodiscard]] std::uint64_t size() const { return (std::uint64_t{info.nFileSizeHigh} << 32) | info.nFileSizeLow; }
};
// Behind links, and what the name itself is.
Found look(const std::string& path);
Found lookAtLink(const std::string& path);
Found lookAt(HANDLE open);

// Opens a plain file. Folders are is_a_directory; devices, names that the system keeps for them and streams of other
// files are refused.
Result<Handle> openPlain(const std::string& path, DWORD access, DWORD how);
// No error where the path can be that of a file: operation_not_permitted for the refused ones, and
// no_such_file_or_directory for names that no file can have.
std::error_code judgePath(const std::string& path);

// Does it again for two seconds while another program, as a scanner, holds the file. attempt: false, with the system's
// last error.
template <class Attempt>
std::error_code patiently(Attempt attempt) {
  constexpr ULONGLONG kPatience = 2000;  // milliseconds
  constexpr DWORD kPause = 20;
  const ULONGLONG begun = ::GetTickCount64();
  while (!attempt()) {
    const DWORD error = ::GetLastError();
    const bool isHeld = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
    if (!isHeld || ::GetTickCount64() - begun >= kPatience) return errorOf(error);
    ::Sleep(kPause);
  }
  return {};
}

}  // namespace os
