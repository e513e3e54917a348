// Files that can be run: the system tells them from others by a permission, or by their name.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace os {

// Whoever may read the file may run it from now on. Nothing to do where a name alone says what can be run.
std::error_code makeExecutable(std::wstring_view path);

// The name of a program's file, such as "kelvane-import.exe" for "kelvane-import".
std::string executableName(std::string_view program);

}  // namespace os
