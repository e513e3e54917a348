// Paths of lists that aren't whole.
#pragma once

#include <string>

namespace actions {

// A path without a drive that doesn't begin at a root is taken from the working folder, as Creo takes it; any other one
// stays as it is.
std::wstring wholePath(const std::wstring& path);

}  // namespace actions
