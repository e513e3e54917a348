#include "kelvane/journal/recovery.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "headless/store/document.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "kelvane/base/words.h"
#include "kelvane/journal/elsewhere.h"
#include "kelvane/journal/journal.h"
#include "kelvane/journal/taking_back.h"
#include "kelvane/journal/vault_tail.h"
#include "os/durable.h"
#include "os/flush.h"
#include "os/left_files.h"
#include "os/links.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

class Recovery {
 public:
  Recovery(const Book& book, RunJournal journal, Outside outside, const MayWrite& mayWrite)
      : book_(book), journal_(std::move(journal)), outside_(outside), mayWrite_(mayWrite) {}

  Recovered run() {
    Recovered told;
    told.run = journal_.run;
    told.package = memberText(journal_.begin, "package");
    told.list = memberText(journal_.begin, "list");
    told.listSum = memberText(journal_.begin, "listSum");
    requireOpen();
    const VaultTail vaults(journal_);
    if (!vaults.failed().empty()) fail(vaults.failed());
    removeTemporaries(vaults);
    stays_ = vaults.stays();
    const VaultTail::Taken ofVaults = vaults.takeBack(book_.keptOf(journal_.run));
    if (!ofVaults.failed.empty()) fail(ofVaults.failed);
    std::vector<std::string> back = takeBackTail();
    for (const std::string& path : ofVaults.objects) back.push_back(path);
    const std::vector<std::string> torn = removeTorn();
    told.wasInFoot = isInFoot();
    const std::string name = journal_.verb() + " " + journal_.run;
    told.lines.push_back(
        name + " broke off" + (told.wasInFoot ? " in Foot" : "") +
        (back.empty() ? "; nothing was half done" : "; what it had begun was taken back: " + firstOf(back)));
    for (const std::string& line : vaults.lines()) told.lines.push_back(std::string(name).append(": ").append(line));
    for (const auto& [path, aside] : found_)
      told.lines.push_back(name + ": " + JournalPaths::shown(path) +
                           " isn't as it was written then; it was put aside as " + shown(aside));
    if (!torn.empty()) told.lines.push_back(name + " left torn versions, which were removed: " + firstOf(torn));
    if (journal_.cutLines > 0)
      told.lines.push_back(name + ": " + counted(static_cast<std::size_t>(journal_.cutLines), "record") +
                           " of its journal was cut");
    std::vector<std::string> found;
    for (const auto& [path, aside] : found_) found.push_back(path);
    Record record = {{"record", "recovered"}, {"at", journalTime()}, {"took", back}, {"found", found}, {"torn", torn}};
    if (stays_ > 0) record["stays"] = stays_;
    add(record);
    return told;
  }

 private:
  static std::string firstOf(const std::vector<std::string>& paths) {
    constexpr std::size_t kMost = 10;
    std::string line;
    for (std::size_t i = 0; i < std::min(kMost, paths.size()); ++i)
      addPiece(line, isVaultRecord(paths[i]) ? vaultLabel(paths[i]) + " in the vault" : JournalPaths::shown(paths[i]));
    return line + (paths.size() > kMost ? " and " + std::to_string(paths.size() - kMost) + " more" : "");
  }

  void requireOpen() const {
    if (outside_ == Outside::own)
      if (const auto paths = notFromHere(book_, journal_); !paths.empty())
        fail(JournalPaths::shown(*paths.begin()).append(kNotFromHere));
    if (!mayWrite_) return;
    for (const Deed& deed : journal_.deeds)
      for (const std::string& path : {deed.path, deed.to})
        if (!path.empty() && !mayWrite_(JournalPaths::system(path)))
          fail(JournalPaths::shown(path) + " isn't granted to this run for writing");
  }

  // The folders that it wrote into; their writer is dead.
  void removeTemporaries(const VaultTail& vaults) const {
    std::set<std::wstring> folders{book_.folder(), book_.folderOf(journal_.run), book_.keptOf(journal_.run)};
    folders.insert(vaults.folders().begin(), vaults.folders().end());
    for (const Deed& deed : journal_.deeds)
      if (!isOfVault(deed.path)) folders.insert(os::folderOf(JournalPaths::system(deed.path)));
    for (const std::wstring& folder : folders) os::removeLeftTemporaries(folder);
  }

  [[nodiscard]] std::vector<Deed> tail() const {
    std::vector<Deed> deeds;
    for (const Deed& deed : journal_.deeds)
      if (deed.turn == journal_.turns && deed.number > stays_) deeds.push_back(deed);
    return deeds;
  }

  // Gives the paths.
  std::vector<std::string> takeBackTail() {
    const std::vector<Deed> deeds = tail();
    const Effects effects = effectsOf(deeds);
    std::map<int, Back> groups = backOf(effects, deeds, &lookAt, true);
    for (const auto& [group, back] : groups) {
      if (!back.lacking.empty()) fail(back.lacking.front());
      if (const std::string fault = keptFault(back, book_.keptOf(journal_.run)); !fault.empty()) fail(fault);
    }
    putForeignAside(effects, deeds);
    if (!found_.empty()) groups = backOf(effects, deeds, &lookAt, true);
    std::vector<std::string> paths;
    for (const auto& [group, back] : groups) {
      if (const std::string failed = takeBack(back, book_.keptOf(journal_.run)); !failed.empty()) fail(failed);
      paths.insert(paths.end(), back.removed.begin(), back.removed.end());
      for (const auto& [from, to] : back.renamed) paths.push_back(from);
      for (const auto& [path, kept] : back.written) paths.push_back(path);
    }
    removeEmptyFolders(effects.folders);
    std::erase_if(journal_.deeds,
                  [this](const Deed& deed) { return deed.turn == journal_.turns && deed.number > stays_; });
    return paths;
  }

  // What somebody saved behind the kill, what a program wrote on, what a loss of power cut: it is in the way of what
  // comes back, and isn't the run's to be removed.
  void putForeignAside(const Effects& effects, const std::vector<Deed>& deeds) {
    for (const auto& [path, effect] : effects.files) {
      const Present now = lookAt(path);
      if (!now.content || (effect.before && effect.before->isSameAs(*now.content))) continue;
      if (!isOfDeeds(deeds, path, *now.content))
        found_.emplace_back(path, putAside(JournalPaths::system(path), L"found"));
    }
  }

  // Moves a file to what the journal keeps, under a name of its own; gives its path there.
  std::wstring putAside(const std::wstring& place, const std::wstring& why) const {
    std::wstring aside;
    for (int number = 1; aside.empty() || os::files().exists(aside); ++number)
      aside = book_.keptOf(journal_.run) + why + L"-" + std::to_wstring(number) + L"-" + os::nameOf(place);
    if (!os::files().rename(place, aside)) return aside;
    // Another disk has it.
    const auto bytes = os::files().read(place);
    std::error_code error = bytes ? os::files().write(aside, bytes.value) : bytes.error;
    if (!error) error = os::flushToDisk(aside);
    if (!error) error = os::files().remove(place);
    if (error) fail(shown(place) + " can't be put aside: " + error.message());
    return aside;
  }

  // Versions that are there by name and no documents, as a loss of power leaves them; they are put aside.
  std::vector<std::string> removeTorn() const {
    std::vector<std::string> torn;
    for (const auto& [path, effect] : effectsOf(journal_.deeds).files) {
      if (!effect.after || !effect.isKnown || !writtenVersion(path)) continue;
      const std::wstring place = JournalPaths::system(path);
      const auto bytes = os::files().read(place);
      if (!bytes || contentOf(bytes.value).isSameAs(*effect.after)) continue;
      headless::ModelRecord record;
      if (!headless::readDocument(bytes.value, record)) continue;  // somebody changed it since
      (void)putAside(place, L"torn");
      torn.push_back(path);
    }
    return torn;
  }

  [[nodiscard]] bool isInFoot() const {
    std::size_t rows = 0, done = 0;
    for (const Record& record : journal_.told) {
      if (memberText(record, "record") == "model") ++done;
      if (memberText(record, "record") == "rows") rows = record.value("rows", Record::array()).size();
    }
    return rows > 0 && done >= rows;
  }

  // What it tells of is on the disk before it is, and it is there when this returns.
  void add(const Record& record) const {
    const std::wstring path = book_.recordsOf(journal_.run);
    if (const auto error = os::settleWritten()) fail(error.message());
    auto records = os::files().append(path);
    // A record that was cut has no end of its line.
    std::error_code error = records ? records.value->write("\n" + sealedLine(record)) : records.error;
    if (!error) error = os::flushToDisk(path);
    if (error) fail(shown(path) + " can't be written: " + error.message());
  }

  [[noreturn]] void fail(const std::string& reason) const {
    throw Fault(journal_.verb() + " " + journal_.run + " broke off and can't be taken back: " + reason +
                " (mend that and start again; or move its journal " + shown(book_.folderOf(journal_.run)) +
                " away, and what it had begun stays as it is)");
  }

  const Book& book_;
  RunJournal journal_;
  Outside outside_;
  const MayWrite& mayWrite_;
  int stays_ = 0;                                            // the deeds of the open turn up to that number
  std::vector<std::pair<std::string, std::wstring>> found_;  // as written, and where it was put
};

// Nothing is done before the first record is whole. Where anything was, somebody altered the records since, and what is
// kept beside them may be all that is left of it.
void removeUnbegun(const Book& book, const RunJournal& journal) {
  const bool hasDone = !journal.deeds.empty() || !journal.told.empty() || journal.cutLines > 1 ||
                       !os::files().list(book.keptOf(journal.run)).value.empty();
  if (hasDone)
    throw Fault(
        "the records of " + shown(book.folderOf(journal.run)) +
        " can't be read, so that what it had begun can't be taken back; move that folder away, then all goes on");
  (void)os::files().removeFolder(book.folder() + text::fromUtf8(journal.run), book.folder());
}

}  // namespace

// Numbers and records are written under names that can be told beforehand.
void requireNoLinks(const Book& book) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path folder = nativePath(os::machineBehindLinks(book.folder()));
  constexpr auto kHow = fs::directory_options::skip_permission_denied;
  for (const auto& entry : fs::recursive_directory_iterator(folder, kHow, error))
    if (entry.is_symlink(error))
      throw Fault(machinePath(entry.path()) + " is a link, and a journal has none; remove it");
}

std::vector<std::string> openEnds(const std::wstring& models) {
  const Book book(models);
  const std::string known = runName(book.storedNumbers().run);
  std::vector<std::string> open;
  for (const std::string& run : book.runs()) {
    if (run.size() < known.size() || (run.size() == known.size() && run <= known)) continue;
    if (book.read(run).isOpen()) open.push_back(run);
  }
  return open;
}

std::vector<Recovered> recoverOpenEnds(const std::wstring& models, Outside outside, const MayWrite& mayWrite) {
  const Book book(models);
  requireNoLinks(book);
  std::vector<Recovered> all;
  for (const std::string& run : openEnds(models)) {
    RunJournal journal = book.read(run);
    if (journal.begin.is_null()) {
      removeUnbegun(book, journal);
      continue;
    }
    all.push_back(Recovery(book, std::move(journal), outside, mayWrite).run());
  }
  return all;
}

}  // namespace kelvane
