// Bytes as base64, with "=" at the end where they don't fill a group.
#pragma once

#include <string>
#include <string_view>

namespace language {

// standard ends its alphabet in "+" and "/", urlSafe in "-" and "_".
enum class Base64 { standard, urlSafe };
std::string base64(std::string_view bytes, Base64 alphabet);

}  // namespace language
