// The tests' hand on the calls of the machine: whoever stands here may have one fail.
#pragma once

#include <span>
#include <string_view>

namespace sweep {

class Asked {
 public:
  virtual ~Asked() = default;
  // A call that may fail with these codes; one of them, which it then gives, or 0.
  virtual int pass(std::string_view call, std::span<const int> codes) = 0;
};
// Who is asked of the calls of the machine's files: open, read, write, fsync, rename, link, unlink, mkdir. Null:
// nobody.
void watchFiles(Asked* asked);

}  // namespace sweep
