// Tells what comes to a log while a run goes on: each line as an event, error lines on the console too, equal ones once
// with their number.
#pragma once

#include "core/log.h"
#include "kelvane/base/console.h"
#include "kelvane/log/accepted_exports.h"
#include "kelvane/log/events.h"
#include "kelvane/log/follower.h"
#include "kelvane/log/lines.h"

namespace kelvane {

class LogTeller {
 public:
  // At most that many error lines reach the console; 0: all.
  LogTeller(Console& console, Events& events, int maxErrors)
      : console_(console), events_(events), maxErrors_(maxErrors) {}
  // Errors that count as warnings from now on; the console leaves them out, as it does those.
  void accept(AcceptedExports accepted) { accepted_ = std::move(accepted); }

  // What stands in the log of that path now isn't told.
  void begin(const std::wstring& path) { follower_.begin(path); }
  // Tells the lines that came since the last look. Gives the number of errors among them that actions of Body had,
  // equal ones once.
  int follow();
  // Lines that were taken from the log elsewhere: of equal ones only the first counts.
  void countOnce(const std::vector<RepeatedLine>& lines);
  // The errors and warnings of the log since it was reset, equal lines once.
  [[nodiscard]] core::LogCounts counts() const;
  // How many error lines were kept back, where some were.
  void tellHidden();
  // The log; empty while nothing was written.
  [[nodiscard]] const std::wstring& path() const { return follower_.path(); }

 private:
  Console& console_;
  Events& events_;
  LogFollower follower_;
  int maxErrors_ = 0, shown_ = 0, hidden_ = 0;
  core::LogCounts repeated_;  // what counts() leaves out
  AcceptedExports accepted_;
};

}  // namespace kelvane
