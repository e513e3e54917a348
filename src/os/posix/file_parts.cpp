#include "os/file_parts.h"

#include "os/posix/descriptor.h"
#include "os/surroundings.h"

namespace os {

Result<std::string> readPart(std::wstring_view path, std::uint64_t from, std::size_t most) {
  Result<std::string> part;
  const auto file = openPlain(mounts().machine(path), O_RDONLY);
  part.error = file.error;
  if (part.error) return part;
  part.value.resize(most);
  std::size_t filled = 0;
  while (filled < most) {
    const ssize_t count =
        ::pread(file.value.number(), part.value.data() + filled, most - filled, static_cast<off_t>(from + filled));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) part.error = lastError();
    if (count <= 0) break;
    filled += static_cast<std::size_t>(count);
  }
  part.value.resize(part.error ? 0 : filled);
  return part;
}

}  // namespace os
