#include "kelvane/run/run_trace.h"

#include <charconv>

#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "os/clock.h"
#include "os/surroundings.h"

namespace kelvane {
namespace {

std::int64_t timeOf(const TraceOptions& options) {
  if (options.time.empty()) return os::clock().seconds();
  std::int64_t seconds = 0;
  const char* const end = options.time.data() + options.time.size();
  const auto read = std::from_chars(options.time.data(), end, seconds);
  if (read.ec != std::errc() || read.ptr != end)
    throw Fault("--trace-time: '" + options.time + "' is no number of seconds");
  return seconds;
}

trace::Head headOf(const RunPlace& place, std::int64_t clock) {
  return {clock,
          place.package,
          place.list,
          place.listSum,
          os::doors().programs,
          place.isConfined,
          {L"p:\\", L"t:\\open_kvz_"}};
}

}  // namespace

RunTrace::RunTrace(const TraceOptions& options, const RunPlace& place) : path_(options.file) {
  if (path_.empty() && !options.time.empty()) throw Fault("--trace-time goes with --trace");
  if (path_.empty()) return;
  if (!trace::isHeard()) throw Fault("--trace: this program was built without what hears operations");
  const trace::Head head = headOf(place, timeOf(options));
  file_.open(nativePath(path_), std::ios::binary | std::ios::trunc);
  if (!file_) throw Fault("the trace " + path_ + " can't be written");
  file_ << trace::written(head);
  recorder_.emplace(
      [this](std::string_view line) { file_.write(line.data(), static_cast<std::streamsize>(line.size())).flush(); });
  doors_.emplace(std::make_shared<trace::OwnPlaces>(head.own), head.clock);
  trace::Tape::setCurrent(&*recorder_);
}

RunTrace::~RunTrace() { trace::Tape::setCurrent(nullptr); }

std::string RunTrace::fault() const {
  return path_.empty() || file_ ? std::string() : "the trace can't be written to " + path_;
}

ReadTrace readTrace(const std::string& path) {
  std::ifstream file(nativePath(path), std::ios::binary);
  if (!file) throw Fault("the trace " + path + " can't be read");
  ReadTrace read;
  for (std::string line; std::getline(file, line);) read.lines.push_back(std::move(line));
  try {
    read.head = trace::readHead(read.lines, read.first);
  } catch (const trace::BadLine& fault) {
    throw Fault(path + ":" + std::to_string(read.first + 1) + ": " + fault.what());
  }
  return read;
}

}  // namespace kelvane
