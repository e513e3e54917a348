// Files that have further names.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace os {

// The path that writing to this one ends at: behind links, also those of its folders and one whose file isn't there
// yet. The path itself, perhaps in another spelling, where there are none.
std::wstring behindLinks(std::wstring_view path);

// Gives a file a second name on the same disk, so that its content outlives the first one; a link is followed.
// file_exists: the name is taken. Any other error: this disk, or this pair of folders, knows no such thing.
std::error_code addName(std::wstring_view file, std::wstring_view name);

}  // namespace os
