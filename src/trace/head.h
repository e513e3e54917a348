// What a trace begins with: what its runs stood on. docs/trace.md tells the form.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "os/doors.h"
#include "trace/doors.h"

namespace trace {

struct Head {
  // Where it stood still, in seconds since 1970; nothing: what it said is in the trace.
  std::optional<std::int64_t> clock;
  std::string package, list, listSum;  // of the one run; empty where there may be several, of which remarks tell
  os::Door programs = os::Door::open;
  bool isConfined = false;
  OwnPlaces own;
};

// The lines, each with its line feed.
std::string written(const Head& head);
// What of the head is read; first becomes the line behind it. BadLine, with first at the line that is at fault: it is
// no trace, one of another version, or damaged.
Head readHead(const std::vector<std::string>& lines, std::size_t& first);

}  // namespace trace
