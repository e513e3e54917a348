// kelvane runs: the runs that a folder's journals tell of, and what each wrote.
#include <set>

#include "kelvane/base/columns.h"
#include "kelvane/base/verb.h"
#include "kelvane/journal/book.h"
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

std::string whatOf(const RunJournal& journal) {
  if (journal.verb() == "undo") return "undo of " + memberText(journal.begin, "of");
  return memberText(journal.begin, "list") + " of " + memberText(journal.begin, "package");
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

class Runs : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder of models", &folder_}, {"--json", "", "as JSON", &json_}};
  }

  int run(Console& console) override {
    const Book book(mountModels(folder_));
    Record all = Record::array();
    std::vector<std::vector<std::string>> rows;
    for (const std::string& run : book.runs()) {
      const RunJournal journal = book.read(run);
      if (json_)
        all.push_back(entryOf(journal));
      else
        rows.push_back(rowOf(journal));
    }
    if (json_) console.resultJson(all.dump(2));
    for (const std::string& line : aligned(rows)) console.result(line);
    return kFine;
  }

 private:
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
            whatOf(journal),
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
