// The journal of `kelvane run`: what open ends it finds, what it begins with, what a run tells it, and its end.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "headless/store/given_numbers.h"
#include "kelvane/base/console.h"
#include "kelvane/journal/journal.h"
#include "kelvane/journal/journal_files.h"
#include "kelvane/journal/recovery.h"
#include "kelvane/run/options.h"
#include "kelvane/run/place.h"
#include "kelvane/run/recap.h"
#include "os/confine.h"

namespace kelvane {

class RunJournalKeeper {
 public:
  // Takes back what broken runs left, then begins; keeps nothing where the options want no journal. A Fault where it
  // can't be begun.
  RunJournalKeeper(const RunOptions& options, const RunPlace& place, Console& console);
  ~RunJournalKeeper();
  RunJournalKeeper(const RunJournalKeeper&) = delete;
  RunJournalKeeper& operator=(const RunJournalKeeper&) = delete;

  // The last run of this list broke off in Foot: it is owed.
  [[nodiscard]] bool owesFoot() const { return owesFoot_; }
  // Models that this list checked in and finished before it broke off: they aren't worked again.
  [[nodiscard]] const std::set<std::string>& finished() const { return finished_; }
  // The door that the run's files go through; the given one where no journal is kept. log: where the run's log will be
  // written, past that door; what lies there is kept. A Fault where the disk has no room for that: an undo would leave
  // the log behind.
  std::shared_ptr<os::Files> before(std::shared_ptr<os::Files> disk, const std::wstring& log);

  // The list begins: its files in the temp folder count.
  void starts(const std::vector<std::string>& rows);
  // A model's turn is over: the members of the record `model`.
  void model(const Record& outcome);
  // It isn't worked.
  void left(const std::string& model, const std::string& reason);
  void sent(const std::string& what);
  // What was used of the grants, and what was refused.
  void grant(const os::Asked& asked);
  // The exit code: that of the run, or that of errors where the journal lacks anything.
  [[nodiscard]] int end(const Recap& recap, int code);

 private:
  void add(const Record& record);
  void recover(const RunOptions& options, const RunPlace& place);
  void noteFault(std::error_code error);

  Console& console_;
  std::optional<Journal> journal_;
  std::optional<JournalPaths> paths_;
  std::optional<headless::GivenNumbers> numbers_;
  std::shared_ptr<JournalFiles> files_;
  std::set<std::string> finished_;
  bool owesFoot_ = false, hasEnded_ = false, hasFault_ = false;
};

// The numbers of a book as the session asks for them.
headless::GivenNumbers::Highest sessionNumbers(const GivenVersions& versions);
// The lines of what was found, as warnings.
void tellRecovered(const std::vector<Recovered>& found, Console& console);
// Takes back what broken runs left and tells it. dryRun: tells which there are, and changes nothing.
void recover(const std::wstring& models, bool dryRun, Outside outside, Console& console);

}  // namespace kelvane
