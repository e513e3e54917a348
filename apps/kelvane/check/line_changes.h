// A text beside one with other lines in the places of some of its own, as people read such changes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

// The hunks of a unified diff, with three lines around each change: "@@ -3,7 +3,7 @@", " <list>", "-<a>", "+<b>". The
// texts have equally many lines; the ends of lines aren't shown.
std::vector<std::string> changedLines(std::string_view before, std::string_view after);

}  // namespace kelvane
