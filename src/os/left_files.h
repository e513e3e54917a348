// What writers leave that were ended in the middle of their work.
#pragma once

#include <string_view>

namespace os {

// Removes the temporary files of a folder (not of those below it) whose process is no more. Call it where a lock keeps
// writers on other machines away. What can't be removed stays.
void removeLeftTemporaries(std::wstring_view folder);

}  // namespace os
