#include "kelvane/run/run_trace.h"

#include <charconv>

#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "os/processes.h"
#include "trace/values.h"

namespace kelvane {
namespace {

constexpr std::string_view kFirstLine = "kelvane trace 1";
constexpr const wchar_t* kConfig = L"t:\\conf\\kvd_main.cfg";

std::int64_t timeOf(const TraceOptions& options) {
  if (options.time.empty()) return os::clock().seconds();
  std::int64_t seconds = 0;
  const char* const end = options.time.data() + options.time.size();
  const auto read = std::from_chars(options.time.data(), end, seconds);
  if (read.ec != std::errc() || read.ptr != end)
    throw Fault("--trace-time: '" + options.time + "' is no number of seconds");
  return seconds;
}

// Each line of the head: a word, then what is written with it.
template <class Head, class Line>
void eachHeadLine(Head& head, const Line& line) {
  line("clock", head.clock);
  line("package", head.package);
  line("list", head.list);
  line("list-sum", head.listSum);
  line("user", head.user);
  line("programs", head.programs);
  line("confined", head.isConfined);
  line("config", head.config);
}

TraceHead headOf(const RunPlace& place, std::int64_t clock) {
  return {clock,
          place.package,
          place.list,
          place.listSum,
          os::environment(L"username").value_or(L""),
          os::doors().programs,
          place.isConfined,
          os::files().read(kConfig).value};
}

}  // namespace

RunTrace::RunTrace(const TraceOptions& options, const RunPlace& place) : path_(options.file) {
  if (path_.empty() && !options.time.empty()) throw Fault("--trace-time goes with --trace");
  if (path_.empty()) return;
  if (!trace::isHeard()) throw Fault("--trace: this program was built without what hears operations");
  const TraceHead head = headOf(place, timeOf(options));
  file_.open(nativePath(path_), std::ios::binary | std::ios::trunc);
  if (!file_) throw Fault("the trace " + path_ + " can't be written");
  recorder_.emplace(
      [this](std::string_view line) { file_.write(line.data(), static_cast<std::streamsize>(line.size())).flush(); });
  file_ << kFirstLine << '\n';
  eachHeadLine(head, [this](std::string_view word, const auto& value) {
    trace::Line line;
    line.word(word);
    trace::put(*recorder_, line, value);
    file_ << line.str() << '\n';
  });
  clock_.emplace();
  os::surroundings().clock = std::make_shared<os::FixedClock>(head.clock);
  doors_.emplace(kOwnPlaces);
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
  if (read.lines.empty() || read.lines.front() != kFirstLine)
    throw Fault(path + " is no trace of this version: its first line isn't '" + std::string(kFirstLine) + "'");
  read.first = 1;
  trace::Recorder nobody([](std::string_view /*line*/) {});
  const auto place = [&] { return path + ":" + std::to_string(read.first + 1) + ": "; };
  eachHeadLine(read.head, [&](std::string_view word, auto& value) {
    if (read.first >= read.lines.size()) throw Fault(place() + "the trace ends in its head");
    try {
      trace::Reading reading(read.lines[read.first]);
      if (const std::string_view found = reading.word(); found != word)
        throw trace::BadLine("'" + std::string(word) + "' is expected, not '" + std::string(found) + "'");
      trace::take(nobody, reading, value);
    } catch (const trace::BadLine& fault) {
      throw Fault(place() + fault.what());
    }
    ++read.first;
  });
  return read;
}

}  // namespace kelvane
