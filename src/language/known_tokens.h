// The words of the template language, for those who look for misspelt ones.
#pragma once

#include <span>
#include <string_view>

namespace language {

// "@date@"; the token that takes a name stands as "@workerdir:".
std::span<const std::wstring_view> knownTokens();
// Names of the text functions: "sub" of "$$sub$1$3$text$$".
std::span<const std::wstring_view> knownFunctions();

}  // namespace language
