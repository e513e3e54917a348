// A fast look through a wide text that most texts pass.
#pragma once

#include <string_view>

namespace text {

// Is every character ASCII, and none of them '$', '%' or '@'?
bool isAsciiWithoutMarks(std::wstring_view text);

}  // namespace text
