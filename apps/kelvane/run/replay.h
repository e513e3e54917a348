// The plug-in against a recorded trace, without a session.
#pragma once

#include <string>

#include "kelvane/base/console.h"

namespace kelvane {

// kFine: it asked what the trace has. At the first thing that it does otherwise the process ends, with lines that tell
// it and kErrors. A Fault: package or trace can't be read, don't belong together, or can't be replayed.
int replayTrace(const std::string& package, const std::string& path, Console& console);

}  // namespace kelvane
