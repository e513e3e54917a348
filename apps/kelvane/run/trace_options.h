// What `kelvane run` was asked of a trace.
#pragma once

#include <string>

namespace kelvane {

struct TraceOptions {
  std::string file;  // what the plug-in asks is recorded there; empty: nowhere
  std::string time;  // seconds since 1970 at which the clock stands meanwhile; empty: when the run begins
};

}  // namespace kelvane
