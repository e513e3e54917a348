// What the actions that work with Creo's configuration options have in common.
#pragma once

#include <string_view>

namespace actions {

// The error line of an option that doesn't take a value.
void tellUnset(std::wstring_view option);

}  // namespace actions
