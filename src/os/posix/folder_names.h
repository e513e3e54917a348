// Finding a name of a folder whatever its case.
#pragma once

#include <string>
#include <string_view>

namespace os {

// The entry of the folder that is `name` case-blind (ASCII and the three umlauts), the first in byte order; empty when
// there is none. What a large folder holds is remembered and kept up by the kernel's change notices, so that saving
// thousands of new files into it doesn't list it each time.
std::string spelledOnDisk(const std::string& folder, std::string_view name);

}  // namespace os
