#include "kelvane/journal/journal.h"

#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/random_digits.h"
#include "os/clock.h"
#include "os/flush.h"
#include "os/links.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

constexpr std::size_t kIdDigits = 32;
constexpr auto kFlushPause = std::chrono::seconds(1);

}  // namespace

std::string journalTime() { return text::toUtf8(os::localTime(os::clock().seconds(), "%Y-%m-%d %H:%M:%S")); }

Journal::Journal(const Book& book, os::Files& disk, const Record& facts, Flush flush)
    : book_(book), disk_(disk), when_(flush), numbers_(book.numbers()), elsewhere_(book.models()) {
  run_ = runName(numbers_.run + 1);
  try {
    begin(facts);
  } catch (const Fault&) {
    records_.reset();
    (void)disk_.removeFolder(book_.folderOf(run_), book_.folder());
    throw;
  }
}

void Journal::begin(const Record& facts) {
  const auto require = [this](std::error_code error) {
    if (error) throw Fault("the journal " + shown(book_.folderOf(run_)) + " can't be begun: " + error.message());
  };
  require(disk_.createFolders(book_.keptOf(run_)));
  require(book_.writeNumbers(numbers_));
  auto opened = disk_.append(book_.recordsOf(run_));
  require(opened.error);
  records_ = std::move(opened.value);
  const std::string id = randomDigits(kIdDigits);
  seals_.emplace(id, book_.keptOf(run_), disk_);
  Record record = {{"record", "begin"}, {"format", kJournalFormat}, {"run", run_}, {"id", id}, {"at", journalTime()}};
  record.update(facts);
  require(add(record));
  require(flush());
  for (const std::wstring& folder : {book_.folderOf(run_), book_.folder()}) {
    const std::error_code error = os::flushToDisk(folder);
    // Some disks, those of a network most of all, bring names there by themselves.
    if (error != std::errc::invalid_argument && error != std::errc::not_supported) require(error);
  }
}

std::error_code Journal::add(const Record& record) { return addLine(sealedLine(record)); }

std::error_code Journal::addLine(const std::string& line) {
  const std::error_code error = records_->write(isTorn_ ? "\n" + line : line);
  isTorn_ = static_cast<bool>(error);
  return error;
}

std::error_code Journal::announce(Deed& deed) {
  deed.number = ++deeds_;
  // What replaces the content of others, or goes to them, must be known even if the power fails right behind the deed.
  const bool isFinal =
      deed.kind == DeedKind::rename || (deed.had && !deed.had->kept.empty()) || isVaultRecord(deed.path);
  seal(deed);
  if (const auto error = addLine(deedLine(deed))) {
    --deeds_;  // no number is missing then: who reads takes a gap for a record that was lost
    return error;
  }
  return isFinal && when_ == Flush::beforeFinal ? flush() : std::error_code{};
}

void Journal::failed(const Deed& deed) { (void)add({{"record", "failed"}, {"n", deed.number}}); }

void Journal::seal(Deed& deed) {
  const bool isNew = deed.kind == DeedKind::write && (!deed.had || deed.had->kept.empty());
  if (elsewhere_.isOfRun(deed.path, isNew) || (!deed.to.empty() && elsewhere_.isOfRun(deed.to, false)))
    deed.seal = seals_->of(deed);
}

std::error_code Journal::closed(Deed deed) {
  seal(deed);
  return addLine(closedLine(deed));
}

std::error_code Journal::reach(const Record& boundary) {
  if (const auto error = add(boundary)) return error;
  keepFromHere();
  return std::chrono::steady_clock::now() - flushed_ < kFlushPause ? std::error_code{} : flush();
}

std::error_code Journal::flush() {
  flushed_ = std::chrono::steady_clock::now();
  return os::flushToDisk(book_.recordsOf(run_));
}

std::error_code Journal::end(Record record) {
  record["deeds"] = deeds_;
  record["at"] = journalTime();
  if (const auto error = add(record)) return error;
  return flush();
}

os::Result<std::optional<Content>> Journal::keep(const std::wstring& path, const std::string& written, bool asCopy) {
  // First, as looking for it costs more: what somebody took away meanwhile was the run's own.
  const auto own = own_.find(written);
  if (own != own_.end() && own->second.turn == turn_) return {own->second.content, {}};
  if (!disk_.size(path)) return {};  // nothing is there, or a folder
  const auto bytes = disk_.read(path);
  if (!bytes) return {{}, bytes.error};
  Content content = contentOf(bytes.value);
  content.kept = std::to_string(kept_ + 1);
  if (const auto error = keepAs(path, book_.keptOf(run_) + text::fromUtf8(content.kept), bytes.value, asCopy))
    return {{}, error};
  ++kept_;
  return {std::move(content), {}};
}

std::error_code Journal::keepAs(const std::wstring& path, const std::wstring& place, const std::string& bytes,
                                bool asCopy) {
  if (!asCopy && !os::addName(path, place)) return {};
  if (const auto error = disk_.write(place, bytes)) return error;
  return os::flushToDisk(place);  // before its original goes, however the run's other files are flushed
}

}  // namespace kelvane
