#include "os/confine.h"

#include <algorithm>

#include "os/links.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace os {
namespace {

const auto kRefused = std::make_error_code(std::errc::operation_not_permitted);

Confine*& current() {
  static Confine* confine = nullptr;
  return confine;
}

std::wstring wide(const std::string& machine) { return text::fromUtf8(machine); }

// The folder that a grant names for a path: itself where it is one.
std::string folderToGrant(Files& files, const std::string& place) {
  if (files.isFolder(mounts().system(place))) return place;
  const std::size_t at = place.rfind('/');
  return at == 0 || at == place.npos ? "/" : place.substr(0, at);
}

std::wstring reasonOf(Grants::Verdict verdict, const Need& need) {
  if (verdict == Grants::Verdict::kept) return L"it is the program's own";
  const std::wstring grant = L"--" + grantText(need);
  return verdict == Grants::Verdict::denied ? L"it needs " + grant + L", which is denied" : grant + L" isn't granted";
}

constexpr std::wstring_view kNotPlain =
    L"a confined command line is one program with its arguments, without ; & | < > ( ) { } $ ` # ! ~ outside quotes, "
    L"without * ? [ in the program, "
    L"without \\\" and without NAME= in front; quotes stand around the whole program";

// What a path leads to is found once: what is judged is what the guard holds to.
struct Judged {
  Judged(Confine& confine, Permission permission, std::wstring_view path)
      : real(machineBehindLinks(path)), guard(path, real), error(confine.touch(permission, real)) {}
  std::string real;
  PlaceGuard guard;
  std::error_code error;
};

// Asks before each request, and opens what was judged and nothing that took its place since.
class ConfinedFiles : public Files {
 public:
  ConfinedFiles(Confine& confine, std::shared_ptr<Files> under) : confine_(confine), under_(std::move(under)) {}

  bool exists(std::wstring_view path) override { return mayLook(path) && under_->exists(path); }
  bool isFolder(std::wstring_view path) override { return mayLook(path) && under_->isFolder(path); }
  Result<std::uint64_t> size(std::wstring_view path) override {
    return mayLook(path) ? under_->size(path) : Result<std::uint64_t>{0, kRefused};
  }
  Result<FileTime> modified(std::wstring_view path) override {
    return mayLook(path) ? under_->modified(path) : Result<FileTime>{{}, kRefused};
  }
  Result<std::vector<Entry>> list(std::wstring_view folder) override {
    if (const auto error = confine_.look(folder)) return {{}, error};
    return under_->list(folder);
  }
  Result<std::string> read(std::wstring_view path) override {
    const Judged judged(confine_, Permission::read, path);
    if (judged.error) return {{}, judged.error};
    return under_->read(path);
  }
  std::error_code readPieces(std::wstring_view path, const std::function<void(std::string_view)>& take) override {
    const Judged judged(confine_, Permission::read, path);
    return judged.error ? judged.error : under_->readPieces(path, take);
  }
  std::error_code write(std::wstring_view path, std::string_view bytes) override {
    const Judged judged(confine_, Permission::write, path);
    return judged.error ? judged.error : under_->write(path, bytes);
  }
  std::error_code create(std::wstring_view path, std::string_view bytes) override {
    const Judged judged(confine_, Permission::write, path);
    return judged.error ? judged.error : under_->create(path, bytes);
  }
  Result<std::unique_ptr<Appender>> append(std::wstring_view path) override {
    const Judged judged(confine_, Permission::write, path);
    if (judged.error) return {nullptr, judged.error};
    return under_->append(path);
  }
  std::error_code createFolders(std::wstring_view path) override {
    const auto error = confine_.write(path);
    return error ? error : under_->createFolders(path);
  }
  std::error_code remove(std::wstring_view path) override {
    const auto error = confine_.write(path, true);
    return error ? error : under_->remove(path);
  }
  std::error_code rename(std::wstring_view from, std::wstring_view to) override {
    if (const auto error = confine_.write(from, true)) return error;
    const auto error = confine_.write(to, true);
    return error ? error : under_->rename(from, to);
  }
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override {
    const auto error = confine_.write(path, true);
    return error ? error : under_->removeFolder(path, within);
  }

 private:
  // No path is that of the root, which anybody knows to be there.
  bool mayLook(std::wstring_view path) { return partsOf(path).empty() || !confine_.look(path); }

  Confine& confine_;
  std::shared_ptr<Files> under_;
};

class ConfinedClipboard : public Clipboard {
 public:
  ConfinedClipboard(Confine& confine, std::shared_ptr<Clipboard> under) : confine_(confine), under_(std::move(under)) {}
  std::optional<std::wstring> text() override { return confine_.paste() ? std::nullopt : under_->text(); }

 private:
  Confine& confine_;
  std::shared_ptr<Clipboard> under_;
};

class ConfinedWeb : public Web {
 public:
  ConfinedWeb(Confine& confine, Web& under) : confine_(confine), under_(under) {}
  text::Result<std::string> send(const WebRequest& request) override {
    if (!confine_.ask(request.url)) return under_.send(request);
    return text::Fault{L"this run may not ask that server"};
  }

 private:
  Confine& confine_;
  Web& under_;
};

}  // namespace

Confine::Confine(Grants grants, std::function<void(const Asked&)> tell)
    : grants_(std::move(grants)),
      tell_(std::move(tell)),
      saved_(surroundings()),
      web_(std::make_shared<ConfinedWeb>(*this, web())),
      outer_(std::exchange(current(), this)) {
  gate() = this;
  surroundings().files = std::make_shared<ConfinedFiles>(*this, saved_.files);
  surroundings().clipboard = std::make_shared<ConfinedClipboard>(*this, saved_.clipboard);
}

Confine::Confine(std::function<bool(const Asked&)> isRefused) : Confine(Grants(), std::function<void(const Asked&)>()) {
  isRefused_ = std::move(isRefused);
}

Confine::~Confine() {
  surroundings().files = saved_.files;
  surroundings().clipboard = saved_.clipboard;
  current() = outer_;
  gate() = outer_;
}

Confine* Confine::inForce() { return current(); }

std::error_code Confine::judged(Grants::Verdict verdict, Need need, std::wstring what, std::wstring_view reason) {
  if (isOwnWork() || (verdict == Grants::Verdict::own && !isRefused_)) return {};
  if (isRefused_)
    return isMaker() && isRefused_({std::move(need), false, std::move(what), {}}) ? kRefused : std::error_code();
  Asked asked{std::move(need), verdict == Grants::Verdict::granted, std::move(what), std::wstring(reason)};
  if (!asked.isGranted && reason.empty()) asked.reason = reasonOf(verdict, asked.need);
  note(asked);
  if (asked.isGranted) return {};
  if (tell_ && isMaker()) tell_(asked);
  return kRefused;
}

void Confine::note(const Asked& asked) {
  const std::lock_guard lock(askedMutex_);
  const bool isKnown = std::any_of(asked_.begin(), asked_.end(), [&](const Asked& known) {
    return known.need == asked.need && known.isGranted == asked.isGranted;
  });
  if (!isKnown) asked_.push_back(asked);
}

std::error_code Confine::touch(Permission permission, const std::string& place) {
  const bool isWrite = permission == Permission::write;
  if (isRefused_)
    return judged(Grants::Verdict::refused, {permission, {}}, (isWrite ? L"write " : L"read ") + wide(place));
  const Grants::Verdict verdict = isWrite ? grants_.mayWrite(place) : grants_.mayRead(place);
  if (verdict == Grants::Verdict::own) return {};
  return judged(verdict, {permission, wide(folderToGrant(*saved_.files, place))},
                (isWrite ? L"write " : L"read ") + wide(place));
}

// Where something may be written it may be seen that it is there.
std::error_code Confine::look(std::wstring_view path) {
  const std::string place = machineBehindLinks(path);
  return Grants::isOpen(grants_.mayWrite(place)) ? std::error_code() : touch(Permission::read, place);
}
std::error_code Confine::read(std::wstring_view path) { return touch(Permission::read, machineBehindLinks(path)); }
std::error_code Confine::write(std::wstring_view path, bool itself) {
  return touch(Permission::write, itself ? machineItself(path) : machineBehindLinks(path));
}

std::error_code Confine::judgedProgram(std::wstring_view program, std::wstring_view folder, const std::wstring& line) {
  const bool isPath = program.find_first_of(L"\\/") != program.npos;
  const std::wstring whole = isPath ? wholeFrom(folder, program) : std::wstring(program);
  const std::wstring device = splitDevice(whole).device;
  // A shell takes a letter that stands for nothing, or has no separator behind it, for a part of a name; and ".." it
  // takes for what lies above where a link leads to.
  const bool isNamed = device.empty() ? whole.starts_with(L'\\') : whole.find(L'\\', 2) == 2 && mounts().has(device[0]);
  const auto parts = text::split(withBackslashes(program), L'\\');
  const bool leadsUp =
      splitDevice(program).device.empty() && std::find(parts.begin(), parts.end(), L"..") != parts.end();
  const bool isLost = isPath && (!isNamed || leadsUp);
  const std::wstring resource = isPath && !isLost ? wide(machineBehindLinks(whole)) : std::wstring(program);
  return judged(isLost ? Grants::Verdict::refused : grants_.mayRun(whole), {Permission::run, resource}, line);
}

std::error_code Confine::run(std::wstring_view command, std::wstring_view folder) {
  const std::wstring line = L"run " + std::wstring(command);
  const PlainCommand plain = plainCommand(command);
  if (const auto error = judgedProgram(plain.program, folder, line)) return error;
  if (plain.isPlain || isOwnWork()) return {};
  // A grant would hold for whatever a value puts behind the program.
  return judged(Grants::Verdict::refused, {Permission::run, plain.program}, line, kNotPlain);
}

std::error_code Confine::start(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) {
  if (program.size() > 1 && program.front() == L'"' && program.back() == L'"')
    program = program.substr(1, program.size() - 2);
  std::wstring line = L"run " + std::wstring(program);
  if (!arguments.empty()) line.append(L" ").append(arguments);
  // A file of the folder is taken before one that the system looks for.
  const bool isName = program.find_first_of(L"\\/") == program.npos;
  const std::wstring beside = joined(folder, program);
  const bool isBeside = isName && !folder.empty() && !isRefused_ && saved_.files->exists(beside);
  if (const auto error = judgedProgram(isBeside ? beside : std::wstring(program), folder, line)) return error;
  if (plainCommand(L"x " + std::wstring(arguments)).isPlain || isOwnWork()) return {};
  return judged(Grants::Verdict::refused, {Permission::run, std::wstring(program)}, line, kNotPlain);
}

std::error_code Confine::open(std::wstring_view path) {
  return judgedProgram(kSystemOpener, {}, L"open " + wide(machineBehindLinks(path)));
}

std::error_code Confine::ask(std::string_view address) {
  const std::wstring host = hostOf(address);
  if (!host.empty()) return judged(grants_.mayAsk(hostAndPortOf(address)), {Permission::net, host}, L"ask " + host);
  return judged(Grants::Verdict::refused, {Permission::net, {}}, L"ask that address", L"it names no server plainly");
}

std::error_code Confine::set(std::wstring_view variable) {
  return judged(grants_.maySet(variable), {Permission::env, std::wstring(variable)}, L"set " + std::wstring(variable));
}

std::error_code Confine::paste() {
  return judged(grants_.mayPaste(), {Permission::clipboard, {}}, L"read the clipboard");
}

std::error_code Confine::play(std::wstring_view what) {
  return judged(grants_.mayRun(kMacros), {Permission::run, std::wstring(kMacros)}, std::wstring(what));
}

OwnWork::OwnWork() : confine_(Confine::inForce()) {
  if (confine_) ++confine_->ownWork_;
}
OwnWork::~OwnWork() {
  if (confine_) --confine_->ownWork_;
}

}  // namespace os
