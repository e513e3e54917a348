// Which lists there are.
#pragma once

#include <string_view>

namespace reports {

// Does the value of `sel` choose a list?
bool isListKind(std::wstring_view sel);

}  // namespace reports
