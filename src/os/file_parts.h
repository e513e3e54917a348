// What needs a file's part alone. The door for all else is os/files.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "os/result.h"

namespace os {

// The bytes of a file from a place on (0: its beginning), at most that many: fewer where it ends, none behind its end.
// The rest isn't read. Errors as those of Files::read.
Result<std::string> readPart(std::wstring_view path, std::uint64_t from, std::size_t most);

}  // namespace os
