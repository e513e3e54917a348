// Files that have further names.
#pragma once

#include <string>
#include <string_view>

namespace os {

// The path that writing to this one ends at: behind links, also those of its folders and one whose file isn't there
// yet. The path itself, perhaps in another spelling, where there are none.
std::wstring behindLinks(std::wstring_view path);

}  // namespace os
