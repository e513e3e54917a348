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

std::optional<std::wstring> heardEnvironment(std::wstring_view name) {
  return asked<std::optional<std::wstring>>(
      "environment", [&] { return os::machineEnvironment(name); }, name);
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

bool OwnPlaces::isUnpacked(std::wstring_view path) const {
  return !unpacked.empty() && text::startsWithNoCase(path, unpacked);
}

bool OwnPlaces::isPackage(std::wstring_view path) const {
  return !packages.empty() && text::startsWithNoCase(path, packages) && text::endsWithNoCase(path, L".kvz");
}

template <class Function, class... Words>
auto HeardFiles::heard(std::string_view name, std::wstring_view path, const Function& real, const Words&... words) {
  using Result = decltype(real());
  return own_->isUnpacked(path) ? real() : asked<Result>(name, real, path, words...);
}

bool HeardFiles::exists(std::wstring_view path) {
  return heard("files.exists", path, [&] { return under_.exists(path); });
}
bool HeardFiles::isFolder(std::wstring_view path) {
  return heard("files.isFolder", path, [&] { return under_.isFolder(path); });
}
os::Result<std::uint64_t> HeardFiles::size(std::wstring_view path) {
  return own_->isPackage(path) ? under_.size(path) : heard("files.size", path, [&] { return under_.size(path); });
}
os::Result<os::FileTime> HeardFiles::modified(std::wstring_view path) {
  return heard("files.modified", path, [&] { return under_.modified(path); });
}
os::Result<std::string> HeardFiles::read(std::wstring_view path) {
  return own_->isPackage(path) ? under_.read(path) : heard("files.read", path, [&] { return under_.read(path); });
}
std::error_code HeardFiles::write(std::wstring_view path, std::string_view bytes) {
  return heard(
      "files.write", path, [&] { return under_.write(path, bytes); }, told(bytes));
}
std::error_code HeardFiles::create(std::wstring_view path, std::string_view bytes) {
  return heard(
      "files.create", path, [&] { return under_.create(path, bytes); }, told(bytes));
}
std::error_code HeardFiles::createFolders(std::wstring_view path) {
  return heard("files.createFolders", path, [&] { return under_.createFolders(path); });
}
std::error_code HeardFiles::remove(std::wstring_view path) {
  return heard("files.remove", path, [&] { return under_.remove(path); });
}
std::error_code HeardFiles::removeFolder(std::wstring_view path, std::wstring_view within) {
  return heard(
      "files.removeFolder", path, [&] { return under_.removeFolder(path, within); }, within);
}
os::Result<std::vector<os::Entry>> HeardFiles::list(std::wstring_view folder) {
  return heard("files.list", folder, [&] { return under_.list(folder); });
}

std::error_code HeardFiles::readPieces(std::wstring_view path, const std::function<void(std::string_view)>& take) {
  if (own_->isUnpacked(path) || !Tape::current() || !Tape::current()->hears()) return under_.readPieces(path, take);
  const auto whole = read(path);
  if (whole) take(whole.value);
  return whole.error;
}

os::Result<std::unique_ptr<os::Appender>> HeardFiles::append(std::wstring_view path) {
  if (own_->isUnpacked(path)) return under_.append(path);
  os::Result<std::unique_ptr<os::Appender>> opened;
  const auto real = [&] {
    opened = under_.append(path);
    return opened.error;
  };
  opened.error = asked<std::error_code>("files.append", real, path);
  if (opened) opened.value = std::make_unique<HeardAppender>(std::move(opened.value), path);
  return opened;
}

std::error_code HeardFiles::rename(std::wstring_view from, std::wstring_view to) {
  const auto real = [&] { return under_.rename(from, to); };
  const bool isOwn = own_->isUnpacked(from) && own_->isUnpacked(to);
  return isOwn ? real() : asked<std::error_code>("files.rename", real, from, to);
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

std::int64_t HeardClock::seconds() {
  return asked<std::int64_t>("clock.seconds", [&] { return under_->seconds(); });
}

void HeardClock::sleep(std::int64_t milliseconds) {
  const auto real = [&] {
    under_->sleep(milliseconds);
    return std::error_code();
  };
  (void)asked<std::error_code>("clock.sleep", real, milliseconds);
}

HeardDoors::HeardDoors(std::shared_ptr<const OwnPlaces> own, std::optional<std::int64_t> clock)
    : web_(std::make_shared<HeardWeb>(os::web())), environment_(&heardEnvironment) {
  os::Surroundings& all = os::surroundings();
  all.files = std::make_shared<HeardFiles>(all.files, std::move(own));
  all.processes = std::make_shared<HeardProcesses>(all.processes);
  all.clipboard = std::make_shared<HeardClipboard>(all.clipboard);
  if (clock)
    all.clock = std::make_shared<os::FixedClock>(*clock);
  else
    all.clock = std::make_shared<HeardClock>(all.clock);
}

}  // namespace trace
