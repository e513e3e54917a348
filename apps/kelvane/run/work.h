// The work of `kelvane run`, from its options to its exit code.
#pragma once

#include "kelvane/base/console.h"
#include "kelvane/run/options.h"
#include "kelvane/run/trace_options.h"

namespace kelvane {

int runList(const RunOptions& options, const TraceOptions& trace, Console& console);

}  // namespace kelvane
