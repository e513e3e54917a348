#include "kelvane/journal/journal_files.h"

#include "kelvane/journal/check_ins.h"
#include "os/paths.h"
#include "os/surroundings.h"

namespace kelvane {
namespace {

// Tells the journal what the file is when the last line is in it.
class JournalAppender : public os::Appender {
 public:
  JournalAppender(std::unique_ptr<os::Appender> under, os::Files& disk, Journal& journal, std::wstring path, Deed deed)
      : under_(std::move(under)), disk_(disk), journal_(journal), path_(std::move(path)), deed_(std::move(deed)) {}
  ~JournalAppender() override {
    under_.reset();
    const auto bytes = disk_.read(path_);
    if (!bytes) return;
    deed_.now = contentOf(bytes.value);
    if (!journal_.closed(deed_)) journal_.wrote(deed_.path, *deed_.now);
  }
  JournalAppender(const JournalAppender&) = delete;
  JournalAppender& operator=(const JournalAppender&) = delete;
  std::error_code write(std::string_view bytes) override { return under_->write(bytes); }

 private:
  std::unique_ptr<os::Appender> under_;
  os::Files& disk_;
  Journal& journal_;
  std::wstring path_;
  Deed deed_;
};

}  // namespace

std::optional<std::string> JournalFiles::counted(std::wstring_view path, bool isNew) const {
  auto written = isNew ? paths_.writtenNew(path) : paths_.written(path);
  if (written && isOfTemp(*written) && !countsTemp_) return std::nullopt;
  return written;
}

std::error_code JournalFiles::carryOut(Deed& deed, const std::function<std::error_code()>& change) {
  // The record may be there although the disk didn't take it.
  const std::error_code refused = journal_.announce(deed);
  const std::error_code error = refused ? refused : change();
  if (error) journal_.failed(deed);
  return error;
}

std::error_code JournalFiles::keepLog(const std::wstring& path) {
  const auto written = counted(path);
  if (!written) return {};
  Deed deed{DeedKind::append, 0, *written, {}, {}, {}, 0};
  auto had = journal_.keep(path, *written, true);
  if (had.error) return had.error;
  deed.had = std::move(had.value);
  log_ = deed;
  return journal_.announce(*log_);
}

void JournalFiles::settleLog() {
  if (!log_) return;
  const auto bytes = under_.read(JournalPaths::system(log_->path));
  const bool isMissing = bytes.error == std::errc::no_such_file_or_directory;
  const bool isAsItWas = log_->had ? bytes && contentOf(bytes.value).isSameAs(*log_->had) : isMissing;
  if (isAsItWas) journal_.failed(*log_);
  log_.reset();
}

std::error_code JournalFiles::announceWrite(std::wstring_view path, std::string_view bytes, Deed& deed) {
  auto had = journal_.keep(std::wstring(path), deed.path, false);
  if (had.error) return had.error;
  deed.had = std::move(had.value);
  deed.now = contentOf(bytes);
  return {};
}

std::error_code JournalFiles::write(std::wstring_view path, std::string_view bytes) {
  const auto written = counted(path);
  if (!written) return under_.write(path, bytes);
  Deed deed{DeedKind::write, 0, *written, {}, {}, {}, 0};
  const bool isRecord = isVaultRecord(*written);
  const std::string before = isRecord ? under_.read(path).value : std::string();
  if (const auto error = announceWrite(path, bytes, deed)) return error;
  if (const auto error = carryOut(deed, [&] { return under_.write(path, bytes); })) return error;
  journal_.wrote(*written, *deed.now);
  if (!isRecord) return {};
  journal_.keepFromHere();
  auto checkIn = checkInOf(before, bytes);
  if (!checkIn) return {};
  (*checkIn)["n"] = deed.number;
  return journal_.add(*checkIn);
}

std::error_code JournalFiles::create(std::wstring_view path, std::string_view bytes) {
  if (under_.exists(path)) return std::make_error_code(std::errc::file_exists);
  const auto written = counted(path, true);
  if (!written) return under_.create(path, bytes);
  Deed deed{DeedKind::write, 0, *written, {}, {}, contentOf(bytes), 0};
  if (const auto error = carryOut(deed, [&] { return under_.create(path, bytes); })) return error;
  journal_.wrote(*written, *deed.now);
  return {};
}

os::Result<std::unique_ptr<os::Appender>> JournalFiles::append(std::wstring_view path) {
  const auto written = counted(path);
  if (!written) return under_.append(path);
  Deed deed{DeedKind::append, 0, *written, {}, {}, {}, 0};
  auto had = journal_.keep(std::wstring(path), *written, true);
  if (had.error) return {nullptr, had.error};
  deed.had = std::move(had.value);
  if (const auto error = journal_.announce(deed)) {
    journal_.failed(deed);
    return {nullptr, error};
  }
  auto opened = under_.append(path);
  if (opened.error) {
    journal_.failed(deed);
    return opened;
  }
  return {std::make_unique<JournalAppender>(std::move(opened.value), under_, journal_, std::wstring(path), deed), {}};
}

std::error_code JournalFiles::createFolders(std::wstring_view path) {
  const std::wstring folder = os::withBackslashes(path);
  if (under_.isFolder(folder)) return {};
  std::wstring above = os::folderOf(folder.ends_with(L'\\') ? folder.substr(0, folder.size() - 1) : folder);
  if (!above.empty() && above.size() < folder.size())
    if (const auto error = createFolders(above)) return error;
  const auto written = counted(folder);
  if (!written) return under_.createFolders(folder);
  Deed deed{DeedKind::folder, 0, *written, {}, {}, {}, 0};
  return carryOut(deed, [&] { return under_.createFolders(folder); });
}

std::error_code JournalFiles::remove(std::wstring_view path) {
  const auto written = counted(path);
  if (!written) return under_.remove(path);
  Deed deed{DeedKind::remove, 0, *written, {}, {}, {}, 0};
  auto had = journal_.keep(std::wstring(path), *written, false);
  if (had.error) return had.error;
  if (!had.value) return under_.remove(path);  // a folder, a broken link, or nothing
  deed.had = std::move(had.value);
  if (const auto error = carryOut(deed, [&] { return under_.remove(path); })) return error;
  journal_.gone(*written);
  return {};
}

std::error_code JournalFiles::rename(std::wstring_view from, std::wstring_view to) {
  const auto source = counted(from), target = counted(to);
  if (!source && !target) return under_.rename(from, to);
  Deed deed{DeedKind::rename, 0, source.value_or(std::string()), target.value_or(std::string()), {}, {}, 0};
  // Out of what is counted, or into it: half of it is a deed.
  if (!source) deed = {DeedKind::write, 0, *target, {}, {}, {}, 0};
  if (!target) deed = {DeedKind::remove, 0, *source, {}, {}, {}, 0};
  if (source != target) {  // else just the spelling changes
    auto had = journal_.keep(std::wstring(target ? to : from), target ? *target : *source, false);
    if (had.error) return had.error;
    deed.had = std::move(had.value);
  }
  if (target && !under_.isFolder(from)) {
    const auto bytes = under_.read(from);
    if (!bytes) return bytes.error;
    deed.now = contentOf(bytes.value);
  }
  if (const auto error = carryOut(deed, [&] { return under_.rename(from, to); })) return error;
  if (source) journal_.gone(*source);
  if (target && deed.now) journal_.wrote(*target, *deed.now);
  return {};
}

// Lists take folders away in their temp folder alone; elsewhere nothing would bring one back.
std::error_code JournalFiles::removeFolder(std::wstring_view path, std::wstring_view within) {
  const auto held = under_.list(path);
  const bool isEmpty = held && held.value.empty();
  if (const auto written = counted(path); written && !isEmpty && under_.exists(path))
    if (const auto error = journal_.add({{"record", "sent"}, {"what", "removed the folder " + *written}})) return error;
  return under_.removeFolder(path, within);
}

}  // namespace kelvane
