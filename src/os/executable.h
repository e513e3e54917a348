// Files that can be run, where the system tells them from others by a permission.
#pragma once

#include <string_view>
#include <system_error>

namespace os {

// Whoever may read the file may run it from now on. Nothing to do where a name alone says what can be run.
std::error_code makeExecutable(std::wstring_view path);

}  // namespace os
