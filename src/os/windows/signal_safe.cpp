// Handlers run on a thread of their own here, but what they have interrupted may hold a lock: so without memory all the
// same.
#include "os/signal_safe.h"

#include <array>
#include <cstring>

#include "os/windows/native.h"

namespace os {
namespace {

constexpr int kLongest = 4096;
using Path = std::array<wchar_t, kLongest>;

// "C:/a/b", as the machine's form has it; false where it is too long.
bool widen(const char* path, Path& wide) {
  if (::MultiByteToWideChar(CP_UTF8, 0, path, -1, wide.data(), kLongest) == 0) return false;
  for (wchar_t& c : wide)
    if (c == L'/') c = L'\\';
  return true;
}

}  // namespace

bool copyInHandler(const char* from, const char* to) noexcept {
  Path source{}, target{};
  return widen(from, source) && widen(to, target) && ::CopyFileW(source.data(), target.data(), FALSE) != 0;
}

void tellInHandler(const char* text) noexcept {
  DWORD written = 0;
  ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
}

}  // namespace os
