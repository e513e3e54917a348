// The configuration of a run.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "kelvane/base/console.h"
#include "kelvane/run/options.h"

namespace kelvane {

// What kvd_main.cfg of a run holds: the installed one, that of --config, the run's own folders (that of
// packages where the options name one), then --set; a later line wins. A Fault for a key that isn't known or a folder
// without the file.
std::string configText(const RunOptions& options);

// What the user's own kvd_user.cfg will add behind that configuration; empty where the plug-in won't read it.
std::string userConfigText(const std::string& config);

// A warning for each line of these files that looks like a key and isn't.
void tellConfigFaults(const RunOptions& options, Console& console);

// Names and values of --creo-option, in the order given; of a name that is given twice the last value. A Fault for one
// without a name or a "=".
std::vector<std::pair<std::wstring, std::wstring>> creoOptions(const RunOptions& options);

}  // namespace kelvane
