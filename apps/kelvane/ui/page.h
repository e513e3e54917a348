// The page's own files, which are part of the program.
#pragma once

#include <vector>

#include "kelvane/ui/server.h"

namespace kelvane::view {

// index.html, ui.js, ui.css; made from apps/kelvane/web when the program is built.
std::vector<Served> webFiles();

}  // namespace kelvane::view
