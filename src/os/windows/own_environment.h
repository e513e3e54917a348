// The environment of the program's own helpers: that which it was started with, without what a list has set since. Only
// programs that a list starts see what it sets.
#pragma once

#include <string>

namespace os {

// As a new process takes it: "NAME=value" and a zero for each, and one more behind all.
std::wstring ownEnvironment();

}  // namespace os
