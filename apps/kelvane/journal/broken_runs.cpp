#include "kelvane/journal/broken_runs.h"

#include "kelvane/base/backwards.h"
#include "kelvane/journal/telling.h"

namespace kelvane {

std::set<std::string> finishedByBrokenRuns(const Book& book, const std::string& package, const std::string& list,
                                           const std::string& listSum) {
  std::set<std::string> finished, takenBack;
  const std::vector<std::string> runs = book.runs();
  for (const std::string& run : Backwards(runs)) {
    const RunJournal journal = book.read(run);
    if (journal.isRecovered && journal.verb() == "undo") {
      takenBack.merge(modelsOf(journal));
      continue;
    }
    const auto is = [&](const char* member, const std::string& text) {
      return memberText(journal.begin, member) == text;
    };
    if (!journal.isRecovered || !is("verb", "run") || !is("package", package) || !is("list", list) ||
        !is("listSum", listSum))
      break;
    // What lost a version behind the run has to be worked anew.
    if (journal.isTorn) break;
    bool isCheckedIn = false;
    for (const Record& record : journal.told) {
      const std::string kind = memberText(record, "record");
      isCheckedIn |= kind == "checkIn";
      if (kind != "model") continue;
      const std::string model = memberText(record, "model");
      if (isCheckedIn && memberNumber(record, "errors") == 0 && !takenBack.contains(model)) finished.insert(model);
      isCheckedIn = false;
    }
  }
  return finished;
}

}  // namespace kelvane
