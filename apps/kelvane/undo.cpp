// kelvane undo: takes back what a run wrote.
#include <algorithm>

#include "kelvane/base/fault.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/verb.h"
#include "kelvane/base/words.h"
#include "kelvane/journal/journal_files.h"
#include "kelvane/journal/recovery.h"
#include "kelvane/journal/undo.h"
#include "kelvane/run/option_rows.h"
#include "kelvane/run/place.h"
#include "kelvane/run/run_journal.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

// The vaults that a run was connected to, in the machine's form.
std::vector<std::string> vaultsOf(const RunJournal& journal) {
  return journal.begin.value("vaults", std::vector<std::string>());
}

// The journal of the undo itself stands before the disk for as long as it lives.
class UndoJournal {
 public:
  UndoJournal(const JournalPlace& place, const Book& book, const RunJournal& run, const Record& facts)
      : disk_(os::surroundings().files),
        journal_(book, *disk_, facts, Journal::Flush::eachSecond),
        files_(std::make_shared<JournalFiles>(disk_, journal_, JournalPaths(place.models, vaultsOf(run)))),
        numbers_(sessionNumbers(journal_.versionsBefore())) {
    files_->countTemp();
    os::surroundings().files = files_;
  }
  ~UndoJournal() { os::surroundings().files = disk_; }
  UndoJournal(const UndoJournal&) = delete;
  UndoJournal& operator=(const UndoJournal&) = delete;
  Journal& journal() { return journal_; }

 private:
  std::shared_ptr<os::Files> disk_;
  Journal journal_;
  std::shared_ptr<JournalFiles> files_;
  headless::GivenNumbers numbers_;
};

class Undo : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder of models", &folder_},
            {"run", "RUN", "a run of it; without one the last that wrote and wasn't taken back", &run_},
            {"--conflict", "abort|skip", "what is done where somebody changed something since: nothing, or the rest",
             &conflict_},
            {"-n,--dry-run", "", "changes nothing and prints what would be done", &dryRun_},
            elsewhereRow(elsewhere_),
            {"--reason", "TEXT", "why; it stands in the journal", &reason_}};
  }

  int run(Console& console) override {
    const Interrupt interrupt;
    const JournalPlace place = prepareJournal(folder_);
    recover(place.models, dryRun_, outside(), console);
    const Book book(place.models);
    const auto found = run_ ? std::make_unique<UndoPlan>(book, book.runNamed(*run_), outside()) : lastOf(book, console);
    if (!found) throw Fault("no run of " + folder_ + " is there to be taken back");
    const UndoPlan& plan = *found;
    for (const std::string& line : plan.conflicts()) console.trouble("conflict: " + line);
    for (const std::string& line : plan.stays()) console.trouble("warning: nothing takes back: " + line);
    const bool aborts = !plan.conflicts().empty() && conflict_ == "abort";
    const std::vector<std::string> lines = plan.lines();
    if (!aborts)
      for (const std::string& line : lines) console.result((dryRun_ ? "would " : "") + line);
    if (aborts) {
      console.trouble("nothing was taken back; --conflict skip takes back what has no conflict");
      return kErrors;
    }
    if (lines.empty()) console.note("run " + plan.journal().run + ": nothing is left to be taken back");
    if (dryRun_ || lines.empty()) return plan.conflicts().empty() ? kFine : kErrors;
    return carryOut(place, book, plan, console);
  }

 private:
  [[nodiscard]] Outside outside() const { return elsewhere_ ? Outside::all : Outside::own; }

  [[nodiscard]] std::unique_ptr<UndoPlan> lastOf(const Book& book, Console& console) const {
    LastPlan last = planOfLast(book, outside());
    std::string runs;
    for (const std::string& run : last.passedOver) addPiece(runs, run);
    if (!runs.empty())
      console.note((last.passedOver.size() == 1 ? "run " : "runs ") + runs + ": nothing is left to be taken back");
    return std::move(last.plan);
  }

  int carryOut(const JournalPlace& place, const Book& book, const UndoPlan& plan, Console& console) const {
    UndoPlan::Done done;
    int code = kFine;
    {
      UndoJournal own(place, book, plan.journal(), facts(plan));
      done = plan.carryOut([&](const Record& boundary) { return own.journal().reach(boundary); },
                           [] { return Interrupt::code() != 0; });
      code = done.failed.empty() && plan.conflicts().empty() ? kFine : kErrors;
      // One that failed is left open, so that its half group is put back like that of a kill.
      if (done.failed.empty()) (void)own.journal().end(endOf(done, code));
    }
    if (!done.failed.empty()) {
      console.trouble("error: " + done.failed);
      tellRecovered(recoverOpenEnds(place.models, outside()), console);
    }
    console.result("undone  run=" + plan.journal().run + " removed=" + std::to_string(done.removed) +
                   " renamed=" + std::to_string(done.renamed) + " put_back=" + std::to_string(done.putBack) +
                   " vault=" + std::to_string(done.vault) + " conflicts=" + std::to_string(plan.conflicts().size()));
    return code;
  }

  [[nodiscard]] Record facts(const UndoPlan& plan) const {
    Record record = {{"verb", "undo"},
                     {"of", plan.journal().run},
                     {"conflict", conflict_},
                     {"user", text::toUtf8(os::environment(L"username").value_or(L""))}};
    if (!reason_.empty()) record["reason"] = reason_;
    for (const char* member : {"vaults", "workspace", "vaultUser"})
      if (plan.journal().begin.contains(member)) record[member] = plan.journal().begin[member];
    return record;
  }

  static Record endOf(const UndoPlan::Done& done, int code) {
    return {{"record", "end"},         {"code", code},       {"removed", done.removed}, {"renamed", done.renamed},
            {"putBack", done.putBack}, {"vault", done.vault}};
  }

  std::string folder_, conflict_ = "abort", reason_;
  std::optional<std::string> run_;
  bool dryRun_ = false, elsewhere_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeUndo() { return std::make_unique<Undo>(); }

}  // namespace kelvane
