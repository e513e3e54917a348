// The work of `kelvane watch`, from its options to its exit code.
#pragma once

#include <string>
#include <vector>

#include "kelvane/base/console.h"
#include "kelvane/run/options.h"

namespace kelvane {

struct WatchOptions {
  RunOptions surroundings;          // folder, package, configuration, events
  std::vector<std::string> models;  // opened before the first command
  bool json = false;
};

int watch(const WatchOptions& options, Console& console);

}  // namespace kelvane
