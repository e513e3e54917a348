#include "machine.h"

#include <windows.h>

#include "os/program.h"

namespace os::test {

namespace fs = std::filesystem;

bool isLink(const fs::path& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}
bool makeLink(const fs::path& at, const std::string& target) {
  fs::path to = pathOf(target);
  to.make_preferred();
  const DWORD kind = fs::is_directory(at.parent_path() / to) ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0;
  constexpr DWORD kByAnybody = 2;  // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE
  const bool isMade = ::CreateSymbolicLinkW(at.c_str(), to.c_str(), kind | kByAnybody) != 0;
  return isMade && isLink(at);
}

void setModified(const fs::path& file, std::int64_t seconds, int milliseconds) {
  const auto ticks = static_cast<std::uint64_t>((seconds + 11'644'473'600) * 10'000'000 + milliseconds * 10'000LL);
  const FILETIME at{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  const HANDLE open = ::CreateFileW(file.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ::SetFileTime(open, nullptr, nullptr, &at);
  ::CloseHandle(open);
}

void setVariable(const char* name, const std::string& value) { ::SetEnvironmentVariableA(name, value.c_str()); }
void takeVariable(const char* name) { ::SetEnvironmentVariableA(name, nullptr); }
std::uint32_t ownProcess() { return ::GetCurrentProcessId(); }

fs::path toldProgram() { return pathOf(programFile()).parent_path() / "kvd_told.exe"; }
void putProgram(const fs::path& at) {
  fs::path file = at;
  fs::copy_file(toldProgram(), file.replace_extension(".exe"));
}

}  // namespace os::test
