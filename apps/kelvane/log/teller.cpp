#include "kelvane/log/teller.h"

#include <nlohmann/json.hpp>

#include "core/state.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

std::string times(int count) { return count == 1 ? std::string() : "  (" + std::to_string(count) + " times)"; }

}  // namespace

int LogTeller::follow() {
  std::vector<LogLine> lines;
  for (const std::wstring& written : follower_.more(core::pluginState().logFile))
    for (LogLine& line : logLines(written)) lines.push_back(std::move(line));
  for (const LogLine& line : lines)
    if (events_.on()) events_.tell("log", {{"level", line.level}, {"text", text::toUtf8(line.text)}});
  const std::vector<RepeatedLine> together = takenTogether(lines);
  countOnce(together);
  int errors = 0;
  for (const auto& [line, count] : together) {
    if (line.level != core::kError || accepted_.takes(line)) continue;
    if (line.text.starts_with(L"(ERR) B")) ++errors;
    const bool shows = maxErrors_ == 0 || shown_ < maxErrors_;
    if (shows) console_.trouble("error: " + text::toUtf8(line.text) + times(count));
    (shows ? shown_ : hidden_) += shows ? 1 : count;
  }
  return errors;
}

void LogTeller::countOnce(const std::vector<RepeatedLine>& lines) {
  for (const auto& [line, count] : lines) {
    const bool isAccepted = accepted_.takes(line);
    if (line.level == core::kError) repeated_.errors += isAccepted ? count : count - 1;
    if (isAccepted) --repeated_.warnings;  // one more of them
    if (line.level == core::kWarning || line.level == core::kFilterNote) repeated_.warnings += count - 1;
  }
}

core::LogCounts LogTeller::counts() const {
  core::LogCounts counts = core::logCounts();
  counts.errors -= repeated_.errors;
  counts.warnings -= repeated_.warnings;
  return counts;
}

void LogTeller::tellHidden() {
  if (hidden_ > 0) console_.trouble("... and " + std::to_string(hidden_) + " more error lines in the log");
}

}  // namespace kelvane
