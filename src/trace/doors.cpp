#include "trace/doors.h"

#include <utility>

#include "os/digest.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "trace/call.h"

namespace trace {
namespace {

// A question whose arguments are only told: the function knows them.
template <class Result, class Function, class... Words>
Result asked(std::string_view name, const Function& function, const Words&... words) {
  Tape* const tape = Tape::current();
  if (!tape || !tape->hears()) return function();
  const auto carriedOut = [&function](const Words&... /*known*/) { return function(); };
  return askOn<Result, decltype(carriedOut), const Words&...>(*tape, name, carriedOut,
                                                              Argument<const Words&>(words, *tape)...);
}

constexpr std::size_t kShort = 1000;

// "text", or "4711 bytes 2fd4e1..."
std::string told(std::string_view bytes) {
  if (bytes.size() <= kShort && text::isUtf8(bytes)) return std::string(bytes);
  return std::to_string(bytes.size()) + " bytes " + os::sha256OfBytes(bytes);
}

class HeardAppender : public os::Appender {
 public:
  HeardAppender(std::unique_ptr<os::Appender> under, std::wstring_view path) : under_(std::move(under)), path_(path) {}
  std::error_code write(std::string_view bytes) override {
    return asked<std::error_code>(
        "files.appended", [&] { return under_ ? under_->write(bytes) : std::error_code(); }, path_, told(bytes));
  }

 private:
  std::unique_ptr<os::Appender> under_;  // null where the trace is played
  std::wstring path_;
};

}  // namespace

bool OwnPlaces::has(std::wstring_view path) const {
  if (path.size() < 2 || path[1] != L':') return false;
  return letters.find(text::lower(path[0])) != letters.npos || text::lower(path.substr(0, unpacked.size())) == unpacked;
}

bool HeardFiles::exists(std::wstring_view path) {
  const auto real = [&] { return under_.exists(path); };
  return own_.has(path) ? real() : asked<bool>("files.exists", real, path);
}

bool HeardFiles::isFolder(std::wstring_view path) {
  const auto real = [&] { return under_.isFolder(path); };
  return own_.has(path) ? real() : asked<bool>("files.isFolder", real, path);
}

os::Result<std::uint64_t> HeardFiles::size(std::wstring_view path) {
  const auto real = [&] { return under_.size(path); };
  return own_.has(path) ? real() : asked<os::Result<std::uint64_t>>("files.size", real, path);
}

os::Result<os::FileTime> HeardFiles::modified(std::wstring_view path) {
  const auto real = [&] { return under_.modified(path); };
  return own_.has(path) ? real() : asked<os::Result<os::FileTime>>("files.modified", real, path);
}

os::Result<std::string> HeardFiles::read(std::wstring_view path) {
  const auto real = [&] { return under_.read(path); };
  return own_.has(path) ? real() : asked<os::Result<std::string>>("files.read", real, path);
}

std::error_code HeardFiles::readPieces(std::wstring_view path, const std::function<void(std::string_view)>& take) {
  if (own_.has(path) || !Tape::current() || !Tape::current()->hears()) return under_.readPieces(path, take);
  const auto whole = read(path);
  if (whole) take(whole.value);
  return whole.error;
}

std::error_code HeardFiles::write(std::wstring_view path, std::string_view bytes) {
  const auto real = [&] { return under_.write(path, bytes); };
  return own_.has(path) ? real() : asked<std::error_code>("files.write", real, path, told(bytes));
}

std::error_code HeardFiles::create(std::wstring_view path, std::string_view bytes) {
  const auto real = [&] { return under_.create(path, bytes); };
  return own_.has(path) ? real() : asked<std::error_code>("files.create", real, path, told(bytes));
}

os::Result<std::unique_ptr<os::Appender>> HeardFiles::append(std::wstring_view path) {
  if (own_.has(path)) return under_.append(path);
  os::Result<std::unique_ptr<os::Appender>> opened;
  const auto real = [&] {
    opened = under_.append(path);
    return opened.error;
  };
  opened.error = asked<std::error_code>("files.append", real, path);
  if (opened) opened.value = std::make_unique<HeardAppender>(std::move(opened.value), path);
  return opened;
}

std::error_code HeardFiles::createFolders(std::wstring_view path) {
  const auto real = [&] { return under_.createFolders(path); };
  return own_.has(path) ? real() : asked<std::error_code>("files.createFolders", real, path);
}

std::error_code HeardFiles::remove(std::wstring_view path) {
  const auto real = [&] { return under_.remove(path); };
  return own_.has(path) ? real() : asked<std::error_code>("files.remove", real, path);
}

std::error_code HeardFiles::rename(std::wstring_view from, std::wstring_view to) {
  const auto real = [&] { return under_.rename(from, to); };
  return own_.has(from) && own_.has(to) ? real() : asked<std::error_code>("files.rename", real, from, to);
}

std::error_code HeardFiles::removeFolder(std::wstring_view path, std::wstring_view within) {
  const auto real = [&] { return under_.removeFolder(path, within); };
  return own_.has(path) ? real() : asked<std::error_code>("files.removeFolder", real, path, within);
}

os::Result<std::vector<os::Entry>> HeardFiles::list(std::wstring_view folder) {
  const auto real = [&] { return under_.list(folder); };
  return own_.has(folder) ? real() : asked<os::Result<std::vector<os::Entry>>>("files.list", real, folder);
}

std::error_code HeardProcesses::doOpen(std::wstring_view path) {
  return asked<std::error_code>(
      "programs.open", [&] { return under_->open(path); }, path);
}

os::Result<int> HeardProcesses::doRun(std::wstring_view command, std::wstring_view folder) {
  return asked<os::Result<int>>(
      "programs.run", [&] { return under_->run(command, folder); }, command, folder);
}

std::error_code HeardProcesses::doStart(std::wstring_view program, std::wstring_view arguments,
                                        std::wstring_view folder) {
  return asked<std::error_code>(
      "programs.start", [&] { return under_->start(program, arguments, folder); }, program, arguments, folder);
}

text::Result<std::string> HeardWeb::send(const os::WebRequest& request) {
  const std::optional<std::string> carried =
      request.body ? std::optional(os::sha256OfBytes(*request.body)) : std::optional<std::string>();
  return asked<text::Result<std::string>>(
      "web.send", [&] { return under_.send(request); }, os::withoutCredentials(request.url), carried);
}

std::optional<std::wstring> HeardClipboard::text() {
  return asked<std::optional<std::wstring>>("clipboard.text", [&] { return under_->text(); });
}

HeardDoors::HeardDoors(const OwnPlaces& own) : web_(std::make_shared<HeardWeb>(os::web())) {
  os::Surroundings& all = os::surroundings();
  all.files = std::make_shared<HeardFiles>(all.files, own);
  all.processes = std::make_shared<HeardProcesses>(all.processes);
  all.clipboard = std::make_shared<HeardClipboard>(all.clipboard);
}

}  // namespace trace
