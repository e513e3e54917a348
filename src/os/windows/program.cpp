#include "os/program.h"

#include "os/executable.h"
#include "os/windows/native.h"

namespace os {
namespace {

std::string fileOf(HMODULE module) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size = ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (size == 0) return {};
    if (size < path.size()) return machineOf(std::wstring_view(path).substr(0, size));
    path.resize(path.size() * 2);
  }
}

}  // namespace

std::string programFile() { return fileOf(nullptr); }

std::string codeFile() {
  HMODULE module = nullptr;
  constexpr DWORD kByAddress = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  static const char place = 0;
  if (!::GetModuleHandleExW(kByAddress, reinterpret_cast<LPCWSTR>(&place), &module)) return programFile();
  return fileOf(module);
}

std::string systemName() { return "windows"; }

bool isTerminal(int stream) {
  DWORD mode = 0;
  constexpr DWORD kHandles[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
  return ::GetConsoleMode(::GetStdHandle(kHandles[stream]), &mode) != 0;
}

// A name alone says what can be run.
std::error_code makeExecutable(std::wstring_view /*path*/) { return {}; }
std::string executableName(std::string_view program) { return std::string(program) + ".exe"; }

}  // namespace os
