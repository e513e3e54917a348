// The work of `kelvane ui`: the session with the plug-in, shown in browsers.
#pragma once

#include <string>

#include "kelvane/base/console.h"
#include "kelvane/run/options.h"

namespace kelvane::view {

struct ViewOptions {
  RunOptions surroundings;  // the folder of models, the configuration, vaults, what may leave the process
  std::string packages;     // a folder of packages, packed or not
  std::string open;         // "GEARBOX.ASM": opened first; empty: none
  std::string language = "en";
  int port = 0;  // 0: a free one
};

// Prints the address of the pages and serves them until a signal ends it; the exit code.
int show(const ViewOptions& options, Console& console);

}  // namespace kelvane::view
