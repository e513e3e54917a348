#include "os/flush.h"

#include "os/posix/descriptor.h"
#include "os/surroundings.h"

namespace os {

std::error_code flushToDisk(std::wstring_view path) {
  const Descriptor open(::open(mounts().machine(path).c_str(), O_RDONLY | O_CLOEXEC));
  if (open.number() < 0) return lastError();
  return ::fsync(open.number()) == 0 ? std::error_code{} : lastError();
}

}  // namespace os
