#include "kelvane/log_teller.h"

#include <nlohmann/json.hpp>

#include "core/state.h"
#include "kelvane/log_lines.h"
#include "text/encoding.h"

namespace kelvane {

void LogTeller::follow() {
  for (const std::wstring& line : follower_.more(core::pluginState().logFile)) {
    const std::vector<LogLine> taken = logLines(line);
    if (taken.empty()) continue;
    const std::string text = text::toUtf8(taken[0].text);
    if (events_.on()) events_.tell("log", {{"level", taken[0].level}, {"text", text}});
    if (taken[0].level != 2) continue;
    const bool shows = maxErrors_ == 0 || shown_ < maxErrors_;
    ++(shows ? shown_ : hidden_);
    if (shows) console_.trouble("error: " + text);
  }
}

void LogTeller::tellHidden() {
  if (hidden_ > 0) console_.trouble("... and " + std::to_string(hidden_) + " more error lines in the log");
}

}  // namespace kelvane
