#include "os/signal_safe.h"

#include <array>
#include <cerrno>
#include <cstring>

#include "os/posix/descriptor.h"

namespace os {

bool copyInHandler(const char* from, const char* to) noexcept {
  const Descriptor source(::open(from, O_RDONLY | O_CLOEXEC));
  if (source.number() < 0) return false;
  const Descriptor target(::open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666));
  if (target.number() < 0) return false;
  std::array<char, 16'384> bytes;
  for (;;) {
    const ssize_t count = ::read(source.number(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0;
    if (target.write({bytes.data(), static_cast<std::size_t>(count)})) return false;
  }
}

void tellInHandler(const char* text) noexcept {
  while (::write(STDERR_FILENO, text, std::strlen(text)) < 0 && errno == EINTR) {
  }
}

}  // namespace os
