// The work of `kelvane run`, from its options to its exit code.
#pragma once

#include "kelvane/console.h"
#include "kelvane/run_options.h"

namespace kelvane {

int runList(const RunOptions& options, Console& console);

}  // namespace kelvane
