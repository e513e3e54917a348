// Whether the plug-in records what it asks, as the configuration says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace core {

struct TraceSettings {
  std::wstring folder;               // for the traces, with its closing separator; empty: nothing is recorded
  std::optional<std::int64_t> time;  // where the clock stands meanwhile, in seconds since 1970
};
TraceSettings& traceSettings();

}  // namespace core
