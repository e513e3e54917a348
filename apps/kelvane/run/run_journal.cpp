#include "kelvane/run/run_journal.h"

#include <filesystem>

#include "kelvane/base/exit_codes.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/hash.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "kelvane/journal/broken_runs.h"
#include "kelvane/run/confined.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

std::vector<std::string> vaultFolders(const RunOptions& options) {
  std::vector<std::string> folders;
  for (const std::string& vault : options.vaults)
    folders.push_back(machinePath(std::filesystem::canonical(nativePath(vault))));
  return folders;
}

Record factsOf(const RunOptions& options, const RunPlace& place) {
  const auto package = os::files().read(L"p:\\" + text::fromUtf8(place.package));
  Record facts = {{"verb", "run"},
                  {"package", place.package},
                  {"packageSum", hexHash(package.value)},
                  {"list", place.list},
                  {"listSum", place.listSum},
                  {"options", options.given},
                  {"user", text::toUtf8(os::environment(L"username").value_or(L""))}};
  if (!options.reason.empty()) facts["reason"] = options.reason;
  if (!options.answers.empty()) facts["answers"] = options.answers;
  if (!options.vaults.empty()) {
    facts["vaults"] = vaultFolders(options);
    const headless::VaultConnection& first = place.vaults.front();
    facts["workspace"] = text::toUtf8(first.workspace);
    facts["vaultUser"] = text::toUtf8(first.user);
  }
  return facts;
}

}  // namespace

headless::GivenNumbers::Highest sessionNumbers(const GivenVersions& versions) {
  headless::GivenNumbers::Highest highest;
  for (const auto& [stem, number] : versions) highest[text::lower(JournalPaths::system(stem))] = number;
  return highest;
}

void tellRecovered(const std::vector<Recovered>& found, Console& console) {
  for (const Recovered& recovered : found)
    for (const std::string& line : recovered.lines) console.trouble("warning: " + line);
}

void recover(const std::wstring& models, bool dryRun, Outside outside, Console& console) {
  if (!dryRun) return tellRecovered(recoverOpenEnds(models, outside), console);
  for (const std::string& run : openEnds(models))
    console.trouble("warning: run " + run + " has no end; what it had begun is taken back first");
}

RunJournalKeeper::RunJournalKeeper(const RunOptions& options, const RunPlace& place, Console& console)
    : console_(console) {
  requireOwnFilesInside(options, place);
  if (!options.keepsJournal()) {
    for (const std::string& run : openEnds(place.models))
      console.trouble("warning: run " + run + " has no end: it is at work, or broke off and left something half done");
    return;
  }
  recover(options, place);
  finished_ = finishedByBrokenRuns(Book(place.models), place.package, place.list, place.listSum);
  journal_.emplace(Book(place.models), os::files(), factsOf(options, place));
  paths_.emplace(place.models, vaultFolders(options));
  numbers_.emplace(sessionNumbers(journal_->versionsBefore()));
}

// A run that ended by a fault has its end all the same: nothing is left open.
RunJournalKeeper::~RunJournalKeeper() {
  if (files_ && !hasEnded_) files_->settleLog();
  if (journal_ && !hasEnded_) (void)journal_->end({{"record", "end"}, {"code", kCouldNot}});
}

void RunJournalKeeper::recover(const RunOptions& options, const RunPlace& place) {
  const std::vector<Recovered> found =
      recoverOpenEnds(place.models, options.elsewhere ? Outside::all : Outside::own, mayTakeBack(options, place));
  tellRecovered(found, console_);
  for (const Recovered& recovered : found) {
    const bool isThis =
        recovered.list == place.list && recovered.listSum == place.listSum && recovered.package == place.package;
    if (!recovered.wasInFoot || !isThis || !place.hasEnds) continue;
    owesFoot_ = true;
    if (!options.headFoot) console_.note("Head and Foot are run once more, as Foot broke off");
  }
}

std::shared_ptr<os::Files> RunJournalKeeper::before(std::shared_ptr<os::Files> disk, const std::wstring& log) {
  if (!journal_) return disk;
  files_ = std::make_shared<JournalFiles>(std::move(disk), *journal_, *paths_);
  if (const auto error = files_->keepLog(log))
    throw Fault("the journal of run " + journal_->run() + " can't be begun: " + shown(log) +
                " can't be kept for an undo: " + error.message());
  return files_;
}

void RunJournalKeeper::starts(const std::vector<std::string>& rows) {
  if (!journal_) return;
  files_->countTemp();
  add({{"record", "rows"}, {"rows", rows}});
}

void RunJournalKeeper::model(const Record& outcome) {
  if (!journal_) return;
  Record record = {{"record", "model"}};
  record.update(outcome);
  noteFault(journal_->reach(record));
}

void RunJournalKeeper::left(const std::string& model, const std::string& reason) {
  add({{"record", "left"}, {"model", model}, {"reason", reason}});
}

void RunJournalKeeper::sent(const std::string& what) { add({{"record", "sent"}, {"what", what}}); }

void RunJournalKeeper::grant(const os::Asked& asked) {
  Record record = {{"record", "grant"}};
  record.update(grantMembers(asked));
  add(record);
}

int RunJournalKeeper::end(const Recap& recap, int code) {
  hasEnded_ = true;
  if (!journal_) return code;
  if (files_) files_->settleLog();
  Record record = {{"record", "end"}, {"code", code}};
  record.update(recapNumbers(recap));
  noteFault(journal_->end(record));
  return code == kFine && hasFault_ ? kErrors : code;
}

void RunJournalKeeper::add(const Record& record) {
  if (journal_) noteFault(journal_->add(record));
}

void RunJournalKeeper::noteFault(std::error_code error) {
  if (!error || hasFault_) return;
  hasFault_ = true;
  console_.trouble("error: the journal can't be written: " + error.message());
}

}  // namespace kelvane
