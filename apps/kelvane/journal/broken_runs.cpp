#include "kelvane/journal/broken_runs.h"

#include "kelvane/base/backwards.h"
#include "kelvane/journal/vault_tail.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

// As rows name them.
void addModelsOf(const RunJournal& journal, std::set<std::string>& models) {
  for (const Deed& deed : journal.deeds) {
    if (isVaultRecord(deed.path)) models.insert(vaultLabel(deed.path));
    for (const std::string* path : {&deed.path, &deed.to})
      if (const auto version = writtenVersion(*path))
        models.insert(text::toUtf8(text::upper(text::fromUtf8(version->stem.substr(version->stem.rfind('/') + 1)))));
  }
}

}  // namespace

std::set<std::string> finishedByBrokenRuns(const Book& book, const std::string& package, const std::string& list,
                                           const std::string& listSum) {
  std::set<std::string> finished, takenBack;
  const std::vector<std::string> runs = book.runs();
  for (const std::string& run : Backwards(runs)) {
    const RunJournal journal = book.read(run);
    if (journal.isRecovered && journal.verb() == "undo") {
      addModelsOf(journal, takenBack);
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
      if (isCheckedIn && record.value("errors", 0) == 0 && !takenBack.contains(model)) finished.insert(model);
      isCheckedIn = false;
    }
  }
  return finished;
}

}  // namespace kelvane
