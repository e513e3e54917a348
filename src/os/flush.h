// What must be on the disk before something else is done.
#pragma once

#include <string_view>
#include <system_error>

namespace os {

// Returns when the content of a file, or the names in a folder, would outlive a loss of power.
std::error_code flushToDisk(std::wstring_view path);

}  // namespace os
