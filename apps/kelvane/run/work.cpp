#include "kelvane/run/work.h"

#include <nlohmann/json.hpp>

#include "core/state.h"
#include "headless/model/one_version.h"
#include "kelvane/base/exit_codes.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/places.h"
#include "kelvane/run/config.h"
#include "kelvane/run/confined.h"
#include "kelvane/run/doors.h"
#include "kelvane/run/driver.h"
#include "kelvane/run/durability.h"
#include "kelvane/run/files.h"
#include "kelvane/run/memory.h"
#include "kelvane/run/place.h"
#include "kelvane/run/read_only_files.h"
#include "kelvane/run/recorded_files.h"
#include "kelvane/run/run_journal.h"
#include "kelvane/run/run_trace.h"
#include "kelvane/run/watch.h"
#include "kelvane/show/model_graph.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

// The files of a run: noted, told to its journal, and in a dry run withheld.
struct RunFiles {
  std::shared_ptr<os::Files> disk = os::surroundings().files;
  std::shared_ptr<os::DryFiles> dry;
  std::shared_ptr<RecordedFiles> recorded;

  RunFiles(const RunOptions& options, const RunPlace& place, RunJournalKeeper& journal) {
    if (options.dryRun) dry = std::make_shared<os::DryFiles>(*disk, L"t:\\");
    recorded = std::make_shared<RecordedFiles>(dry ? std::static_pointer_cast<os::Files>(dry)
                                                   : journal.before(disk, logTarget(options, place.models)));
    os::surroundings().files = recorded;
    if (options.readOnly) os::surroundings().files = std::make_shared<ReadOnlyFiles>(recorded);
  }
  ~RunFiles() { os::surroundings().files = disk; }
  RunFiles(const RunFiles&) = delete;
  RunFiles& operator=(const RunFiles&) = delete;
};

// "write d:\\a.csv" and "rename d:\\a to d:\\b" with the machine's paths.
std::string withheldLine(const std::wstring& line) {
  const std::size_t blank = line.find(L' ');
  const std::string verb = text::toUtf8(line.substr(0, blank)) + " ";
  const std::wstring rest = line.substr(blank + 1);
  const std::size_t to = rest.find(L" to ");
  if (verb != "rename " || to == rest.npos) return verb + shown(rest);
  return verb + shown(rest.substr(0, to)) + " to " + shown(rest.substr(to + 4));
}

// The models' folder and those of the search path, as far as the run is told of them.
std::vector<std::vector<headless::FolderDocument>> documentsOf(const RunPlace& place) {
  std::vector<std::vector<headless::FolderDocument>> folders{headless::readFolder(place.models)};
  for (const auto& [name, value] : place.creoOptions)
    if (text::equalNoCase(name, L"search_path") && !value.empty())
      folders.push_back(headless::readFolder(os::wholeFrom(place.models, value)));
  return folders;
}

bool isLog(const std::wstring& path) { return os::nameOf(path).starts_with(L"kvd_log - "); }

class RunWork {
 public:
  RunWork(const RunOptions& options, const TraceOptions& trace, Console& console)
      : options_(options),
        console_(console),
        durable_(durability(options)),
        place_(prepareRun(options)),
        journal_(options, place_, console),
        files_(options, place_, journal_),
        doors_(options,
               options.keepsJournal() ? Tell([this](const std::string& what) { journal_.sent(what); }) : Tell()),
        headFoot_(options.headFoot || journal_.owesFoot()),
        confinement_(options, place_, console),
        trace_(trace, place_),
        keeper_(keepsLog(options) ? shown(logTarget(options, place_.models)) : std::string()) {
    tellConfigFaults(options, console);
    tellLackingGrants(place_, console);
    files_.recorded->tellAppends([](std::wstring_view path) {
      if (path == core::pluginState().logFile) LogKeeper::follow(shown(path));
    });
    files_.recorded->keep(logTarget(options, place_.models));
    if (!options.events.empty()) events_.open(options.events);
  }

  int run() {
    const int code = work();
    for (const os::Asked& asked : confinement_.asked()) journal_.grant(asked);
    return journal_.end(recap_, code);
  }

 private:
  using Tell = std::function<void(const std::string&)>;

  int work() {
    const ModelGraph graph(documentsOf(place_));
    std::vector<ModelFileName> starts;
    for (const std::string& start : options_.starts) starts.push_back(graph.start(start));
    const ModelGraph::Trouble trouble = graph.trouble(starts);
    if (starts.empty()) starts = graph.starts();
    const headless::OneVersion oneVersion;
    const headless::FlatMemory flatMemory(documentsKept);
    headless::Session session(sessionOptions(options_, place_));
    for (const auto& [name, value] : place_.creoOptions) session.setOption(name, value);
    for (const auto& vault : place_.vaults) {
      const std::wstring reason = session.servers().connect(vault);
      if (!reason.empty()) throw Fault(text::toUtf8(reason));
    }
    const Answerer answerer(session, place_.answers, console_);
    RunWatch watch(session, options_, console_, events_, durable_);
    watch.tellOutcomes([this](const Record& outcome) { journal_.model(outcome); });
    for (const auto& damaged : trouble.damaged) {
      watch.tellDamaged(damaged.model, damaged.fault);
      journal_.left(damaged.model, damaged.fault);
    }
    for (const std::string& line : trouble.missing) console_.trouble("warning: " + line);
    if (starts.empty() && !headFoot_) {
      tellNoModel();
      watch.countDamaged(recap_);
      return finish(0);
    }
    console_.passing("reading the models");
    session.trace(options_.operations && events_.on());
    const int code = drive(session, watch, starts);
    return code == kFine && answerer.troubled() ? kErrors : code;
  }

  int drive(headless::Session& session, RunWatch& watch, const std::vector<ModelFileName>& starts) {
    RunDriver driver(session, place_);
    driver.openTool();
    if (Interrupt::code() != 0) return finish(Interrupt::code());
    watch.accept(AcceptedExports(options_.accept));  // the log's language is known now
    if (const std::string missing = driver.missingFilter(); !missing.empty())
      console_.trouble("warning: the package has no filter '" + missing + "' (kvd_ext_filter_file); none judges");
    for (const auto& [model, reason] : driver.fill(starts)) {
      const std::string line = reason.empty() ? model + " can't be opened" : reason;
      watch.tellDamaged(model, line);
      journal_.left(model, line);
    }
    RunDriver::Choice choice = driver.choose(options_, journal_.finished());
    watch.tellFilling();
    watch.countDamaged(recap_);
    recap_.skipped = choice.skipped;
    for (const auto& [model, reason] : choice.left) journal_.left(model, reason);
    recap_.models += choice.skipped;
    if (!choice.unmatched.empty()) console_.trouble("warning: " + choice.unmatched);
    if (choice.skipped > 0) {
      console_.note("warning: " + std::to_string(choice.skipped) +
                    " models were worked by this list before and are left out; --again works them once more");
    }
    if (Interrupt::code() != 0) return finish(Interrupt::code());
    if (options_.checkOut && !choice.rows.empty()) checkOut(session, driver, choice);
    if (choice.rows.empty()) tellNoModel();
    if (choice.rows.empty() && !headFoot_) {
      takeCounts(watch);
      journal_.starts({});
      if (recap_.errors > 0) log_ = keepLog(core::pluginState().logFile, options_, place_.models, console_, troubled_);
      return finish(0);
    }
    if (choice.rows.size() == 1) driver.bringForward(choice.rows.front());
    files_.recorded->forgetAll();
    journal_.starts(choice.rows);
    watch.begin(choice.rows);
    const std::string broke = started(driver);
    watch.end(recap_);
    takeCounts(watch);
    if (!broke.empty()) console_.trouble("error: the run broke off: " + broke);
    tellWhatReportsLack(watch, choice.skipped);
    showResults(session, watch);
    return finish(broke.empty() ? Interrupt::code() : kErrors);
  }

  // What isn't checked out isn't worked, unless the site gives up such a run as a whole.
  void checkOut(headless::Session& session, RunDriver& driver, RunDriver::Choice& choice) {
    for (const RunDriver::Refused& refused : driver.checkOut()) {
      console_.trouble(std::string(refused.failed ? "error: " : "warning: ") + refused.row +
                       " can't be checked out: " + refused.reason);
      if (core::pluginState().cancelIfNotCheckedOut == 1) continue;
      leaveOut(session, {refused.row});
      std::erase(choice.rows, refused.row);
      journal_.left(refused.row, "it can't be checked out: " + refused.reason);
      ++(refused.failed ? recap_.failed : recap_.skipped);
      ++recap_.models;
      if (events_.on())
        events_.tell(
            "model",
            {{"model", refused.row}, {"fault", refused.reason}, {"outcome", refused.failed ? "failed" : "skipped"}});
    }
  }

  void tellNoModel() {
    const bool leavesOut = place_.hasEnds && !headFoot_;
    console_.note(std::string("no model is left to work") +
                  (leavesOut ? "; Head and Foot weren't run (--head-foot runs them)" : ""));
  }

  void takeCounts(const RunWatch& watch) {
    recap_.errors = watch.counts().errors;
    recap_.warnings = watch.counts().warnings;
    troubled_ = troubled_ || watch.hadFaults();
  }

  // Rows are written when a report is closed: those of an earlier run went with the file that begins anew.
  void tellWhatReportsLack(const RunWatch& watch, int workedBefore) {
    if (workedBefore == 0 || watch.reportsBegunAnew().empty()) return;
    std::string all;
    for (const std::string& name : watch.reportsBegunAnew()) all += (all.empty() ? "" : ", ") + name;
    console_.trouble("warning: " + std::to_string(workedBefore) + (workedBefore == 1 ? " model is" : " models are") +
                     " missing in reports that begin anew (" + all + "), as an earlier run of this list worked " +
                     (workedBefore == 1 ? "it" : "them"));
  }

  // Empty, or why the run didn't come to its end; its log and its recap are wanted all the same.
  static std::string started(RunDriver& driver) {
    try {
      driver.start();
    } catch (const std::exception& fault) {
      return fault.what();
    }
    return {};
  }

  // Files that the list wrote: no documents of models, and nothing of the log.
  std::vector<std::wstring> listFiles(const RunWatch& watch) const {
    std::vector<std::wstring> files;
    for (const std::wstring& path : files_.recorded->written()) {
      if (!isLog(path) && !watch.isModel(path)) files.push_back(path);
    }
    return files;
  }

  void showResults(headless::Session& session, const RunWatch& watch) {
    if (options_.dryRun) {
      watch.showChanges();
      for (const std::wstring& line : session.servers().withheld()) {
        console_.result("would " + text::toUtf8(line));
      }
      for (const std::wstring& line : files_.dry->withheld()) {
        console_.result("would " + withheldLine(line));
      }
      for (const std::wstring& line : RunDoors::withheld()) console_.result("would " + text::toUtf8(line));
      for (const std::string& request : doors_.requests()) console_.result("would send " + request);
    }
    log_ = keepLog(watch.logFile(), options_, place_.models, console_, troubled_);
    const std::vector<std::wstring> files = listFiles(watch);
    if (!options_.dryRun) showPlaces(files, console_, events_);
    if (!options_.collect.empty() && !options_.dryRun) collectAll();
  }

  void collectAll() {
    std::vector<std::wstring> all = files_.recorded->written();
    std::erase_if(all, isLog);
    const os::OwnWork copying;
    try {
      collect(all, options_.collect);
      console_.result("collected  " + shown(systemPath(options_.collect)));
    } catch (const Fault& fault) {
      console_.trouble(std::string("error: ") + fault.what());
      troubled_ = true;
    }
  }

  // Of what came behind the run itself: files that were collected, and the log.
  void tellUnsafe() {
    (void)os::settleWritten();
    for (const os::Unsafe& file : durable_.takeFailures()) {
      console_.trouble("error: " + unsafeLine(file));
      troubled_ = true;
    }
  }

  // The recap, and the exit code: that of a signal, or what the run came to.
  int finish(int code) {
    tellUnsafe();
    if (confinement_.tellUntold()) troubled_ = true;
    if (!log_.empty()) console_.result("log  " + log_);
    console_.result(recapLine(recap_, options_.dryRun ? "dry" : "done"));
    confinement_.tell(events_);
    if (events_.on()) events_.tell("recap", recapNumbers(recap_));
    for (const std::string& fault : {events_.fault(), trace_.fault()}) {
      if (fault.empty()) continue;
      console_.trouble("error: " + fault);
      troubled_ = true;
    }
    if (code != 0) return code;
    return troubled_ || recap_.errors > 0 || recap_.failed > 0 ? kErrors : kFine;
  }

  const RunOptions& options_;
  Console& console_;
  os::Durable durable_;
  RunPlace place_;
  RunJournalKeeper journal_;
  RunFiles files_;
  RunDoors doors_;
  bool headFoot_;  // Head and Foot run without a model, too
  RunConfinement confinement_;
  RunTrace trace_;
  LogKeeper keeper_;
  Events events_;
  Recap recap_;
  std::string log_;
  bool troubled_ = false;  // something beside the run itself failed, or went wrong without the log
};

}  // namespace

int runList(const RunOptions& options, const TraceOptions& trace, Console& console) {
  const Interrupt interrupt;
  return RunWork(options, trace, console).run();
}

}  // namespace kelvane
