// The configuration of a run.
#pragma once

#include <string>

#include "kelvane/run_options.h"

namespace kelvane {

// What kvd_main.cfg of a run holds: the installed one, that of --config, the run's own folders, then --set; a later
// line wins. A Fault for a key that isn't known or a folder without the file.
std::string configText(const RunOptions& options);

}  // namespace kelvane
