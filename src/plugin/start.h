// Start and end of the plug-in behind its two entries.
#pragma once

#include <string_view>

#include "text/fault.h"

namespace plugin {

// A fault, that Creo is to show: it isn't started.
text::Fault startPlugin(std::string_view version, std::string_view build);
void endPlugin();

}  // namespace plugin
