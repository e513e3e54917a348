// Whether what was opened is what was judged (PlaceGuard, os/links.h).
#pragma once

#include <functional>
#include <string>

namespace os {

// path: under which it was opened, in the machine's form. opened: gives the path of what is open, behind all links; it
// is asked where a guard knows that path. True where none does.
bool isAsGuarded(const std::string& path, const std::function<std::string()>& opened);

}  // namespace os
