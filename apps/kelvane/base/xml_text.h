// Texts as XML writes them.
#pragma once

#include <string>
#include <string_view>

namespace kelvane {

// Text and attribute values with what XML reserves written as entities; control characters are left out.
std::string escaped(std::string_view text);

}  // namespace kelvane
