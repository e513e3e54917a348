// kelvane purge: drops old versions of documents, and the journals of old runs.
#include <algorithm>
#include <map>
#include <set>

#include "kelvane/base/fault.h"
#include "kelvane/base/verb.h"
#include "kelvane/journal/book.h"
#include "kelvane/run/option_rows.h"
#include "kelvane/run/place.h"
#include "kelvane/run/run_journal.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

class Purge : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder of models", &folder_},
            {"--keep", "N", "so many runs keep their journals, and each document so many versions beside those of them",
             &keep_},
            elsewhereRow(elsewhere_),
            {"-n,--dry-run", "", "changes nothing and prints what would go", &dryRun_}};
  }

  int run(Console& console) override {
    if (keep_ < 1) throw Fault("--keep N is missing; N is 1 or more");
    const JournalPlace place = prepareJournal(folder_);
    recover(place.models, dryRun_, elsewhere_ ? Outside::all : Outside::own, console);
    const Book book(place.models);
    const std::vector<std::string> runs = book.runs();
    const std::size_t old = runs.size() - std::min(runs.size(), static_cast<std::size_t>(keep_));
    std::set<std::string> written;
    for (std::size_t i = old; i < runs.size(); ++i)
      for (const Deed& deed : book.read(runs[i]).deeds) written.insert(deed.to.empty() ? deed.path : deed.to);
    const std::vector<std::string> versions = oldVersions(place.models, written);
    for (const std::string& version : versions) console.result((dryRun_ ? "would remove " : "remove ") + version);
    for (std::size_t i = 0; i < old; ++i) console.result((dryRun_ ? "would drop run " : "drop run ") + runs[i]);
    if (!dryRun_) {
      // Numbers outlive the journals that told of them.
      if (const auto error = old > 0 ? book.writeNumbers(book.numbers()) : std::error_code{})
        throw Fault("the numbers of versions can't be kept: " + error.message());
      for (const std::string& version : versions)
        require(version, os::files().remove(place.models + text::fromUtf8(version)));
      for (std::size_t i = 0; i < old; ++i)
        require("run " + runs[i], os::files().removeFolder(book.folder() + text::fromUtf8(runs[i]), book.folder()));
    }
    console.result(std::string(dryRun_ ? "dry" : "purged") + "  versions=" + std::to_string(versions.size()) +
                   " runs=" + std::to_string(old));
    return kFine;
  }

 private:
  // Behind the newest ones, those that no kept run wrote. What such a run found lies among the newest of these, so that
  // it can still be taken back.
  [[nodiscard]] std::vector<std::string> oldVersions(const std::wstring& models,
                                                     const std::set<std::string>& written) const {
    std::map<std::string, std::vector<std::pair<int, std::string>>> ofStem;
    for (const os::Entry& entry : os::files().list(models).value) {
      const std::string name = text::toUtf8(entry.name);
      const auto version = entry.isFolder ? std::nullopt : writtenVersion(name);
      if (version && !written.contains(name)) ofStem[version->stem].emplace_back(version->number, name);
    }
    std::vector<std::string> old;
    for (auto& [stem, versions] : ofStem) {
      std::sort(versions.rbegin(), versions.rend());
      for (std::size_t i = static_cast<std::size_t>(keep_); i < versions.size(); ++i) old.push_back(versions[i].second);
    }
    return old;
  }

  static void require(const std::string& what, std::error_code error) {
    if (error) throw Fault(what + " can't be removed: " + error.message());
  }

  std::string folder_;
  int keep_ = 0;
  bool dryRun_ = false, elsewhere_ = false;
};

}  // namespace

std::unique_ptr<Verb> makePurge() { return std::make_unique<Purge>(); }

}  // namespace kelvane
