// kelvane runs: the runs that a folder's journals tell of, and what each wrote.
#include <map>
#include <set>

#include "kelvane/base/columns.h"
#include "kelvane/base/verb.h"
#include "kelvane/base/words.h"
#include "kelvane/journal/telling.h"
#include "kelvane/show/model_folder.h"

namespace kelvane {
namespace {

// What a run came to: an open end is told before anybody works on it.
std::string stateOf(const RunJournal& journal) {
  if (journal.isRecovered) return "broke off, taken back to a whole model";
  if (journal.isOpen()) return "has no end: at work, or broken off";
  const int code = journal.end.value("code", kFine);
  return code == kFine ? "fine" : "exit code " + std::to_string(code);
}

struct Wrote {
  std::size_t versions = 0, renamed = 0, removed = 0, others = 0, checkedIn = 0;
};

Wrote wroteOf(const RunJournal& journal) {
  std::set<std::string> versions, others;
  Wrote wrote;
  for (const Deed& deed : journal.deeds) {
    if (isOfVault(deed.path)) continue;
    if (deed.kind == DeedKind::rename) ++wrote.renamed;
    if (deed.kind == DeedKind::remove) ++wrote.removed;
    if (deed.kind != DeedKind::write && deed.kind != DeedKind::append) continue;
    (writtenVersion(deed.path) ? versions : others).insert(deed.path);
  }
  for (const Record& record : journal.told)
    if (memberText(record, "record") == "checkIn") ++wrote.checkedIn;
  wrote.versions = versions.size();
  wrote.others = others.size();
  return wrote;
}

// The undo behind each run of which something is taken back.
class TakenBack {
 public:
  // In their order.
  void take(const RunJournal& journal) {
    if (journal.verb() != "undo" || journal.deeds.empty()) return;
    const std::string of = memberText(journal.begin, "of");
    const bool isWhole = !journal.end.is_null() && journal.end.value("code", kErrors) == kFine;
    undos_[journal.run] = of;
    by_[of] = {journal.run, isWhole};
    // An undo that is undone has taken nothing back.
    if (const auto undone = undos_.find(of); undone != undos_.end() && isWhole) by_.erase(undone->second);
  }
  // "taken back by 0004", "taken back in part by 0004"; empty: it stands.
  [[nodiscard]] std::string of(const std::string& run) const {
    const auto found = by_.find(run);
    if (found == by_.end()) return {};
    return std::string(found->second.isWhole ? "taken back by " : "taken back in part by ") + found->second.undo;
  }

 private:
  struct By {
    std::string undo;
    bool isWhole = false;
  };
  std::map<std::string, std::string> undos_;  // and the run that each took back
  std::map<std::string, By> by_;
};

class Runs : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder of models", &folder_}, {"--json", "", "as JSON", &json_}};
  }

  int run(Console& console) override {
    const Book book(mountModels(folder_));
    Record all = Record::array();
    std::vector<std::vector<std::string>> rows;
    TakenBack takenBack;
    const std::vector<std::string> runs = book.runs();
    for (const std::string& run : runs) {
      const RunJournal journal = book.read(run);
      if (json_)
        all.push_back(entryOf(journal));
      else
        rows.push_back(rowOf(journal));
      takenBack.take(journal);
    }
    for (std::size_t i = 0; i < runs.size(); ++i) {
      const std::string line = takenBack.of(runs[i]);
      if (json_ && !line.empty()) all[i]["takenBack"] = line;
      if (!json_) addPiece(rows[i][kState], line, "; ");
    }
    if (json_) console.resultJson(all.dump(2));
    for (const std::string& line : aligned(rows)) console.result(line);
    return kFine;
  }

 private:
  static constexpr std::size_t kState = 5;  // the column of what a run came to

  static std::vector<std::string> rowOf(const RunJournal& journal) {
    const Wrote wrote = wroteOf(journal);
    std::string numbers = "versions=" + std::to_string(wrote.versions);
    if (wrote.renamed > 0) numbers += " renamed=" + std::to_string(wrote.renamed);
    if (wrote.removed > 0) numbers += " removed=" + std::to_string(wrote.removed);
    numbers += " files=" + std::to_string(wrote.others);
    if (wrote.checkedIn > 0) numbers += " checked_in=" + std::to_string(wrote.checkedIn);
    return {journal.run,
            memberText(journal.begin, "at"),
            memberText(journal.begin, "user"),
            whatRan(journal),
            numbers,
            stateOf(journal),
            memberText(journal.begin, "reason")};
  }

  static Record entryOf(const RunJournal& journal) {
    const Wrote wrote = wroteOf(journal);
    Record entry = {{"run", journal.run}, {"begin", journal.begin}, {"end", journal.end}};
    entry["recovered"] = journal.isRecovered;
    entry["wrote"] = {{"versions", wrote.versions},
                      {"renamed", wrote.renamed},
                      {"removed", wrote.removed},
                      {"files", wrote.others},
                      {"checkedIn", wrote.checkedIn}};
    return entry;
  }

  std::string folder_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeRuns() { return std::make_unique<Runs>(); }

}  // namespace kelvane
