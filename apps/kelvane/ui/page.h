// The page of `kelvane ui`, which is part of the program.
#pragma once

#include <string>

namespace kelvane::view {

// index.html with style and scripts inside; made from apps/kelvane/web when the program is built. The server puts a new
// value in place of each "@nonce@", and what is told at the moment in place of "@told@".
std::string page();

}  // namespace kelvane::view
