// Whether what was opened is what was judged (PlaceGuard, os/links.h).
#pragma once

#include <string>

namespace os {

// path: under which it was opened, in the machine's form. True where no guard knows that path.
bool isAsGuarded(int descriptor, const std::string& path);

}  // namespace os
