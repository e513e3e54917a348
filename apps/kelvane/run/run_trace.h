// The trace of a run: what it stood on, then all that the plug-in asked. docs/trace.md tells the form.
#pragma once

#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kelvane/run/place.h"
#include "kelvane/run/trace_options.h"
#include "trace/doors.h"
#include "trace/head.h"
#include "trace/tape.h"

namespace kelvane {

// While it lives the run is recorded, if the options say so. Made when all else is in its place and before the session.
// The clock stands still meanwhile, so that what the run writes doesn't tell how long it took.
class RunTrace {
 public:
  // A Fault: the file can't be made, the time is none, or the program was linked without what hears operations.
  RunTrace(const TraceOptions& options, const RunPlace& place);
  ~RunTrace();
  RunTrace(const RunTrace&) = delete;
  RunTrace& operator=(const RunTrace&) = delete;
  // Empty, or what to say of a trace that couldn't be written.
  [[nodiscard]] std::string fault() const;

 private:
  std::string path_;
  std::ofstream file_;
  std::optional<trace::HeardDoors> doors_;
  std::optional<trace::Recorder> recorder_;
};

// A trace that was read.
struct ReadTrace {
  trace::Head head;
  std::vector<std::string> lines;
  std::size_t first = 0;  // the line behind the head
};
// A Fault: there is no such file, it is no trace or one of another version, or its head is damaged.
ReadTrace readTrace(const std::string& path);

}  // namespace kelvane
