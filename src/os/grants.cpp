#include "os/grants.h"

#include <algorithm>

#include "os/links.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "os/windows_rules.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace os {
namespace {

using Verdict = Grants::Verdict;

bool isBelow(std::string_view path, std::string_view folder) {
  while (folder.ends_with('/')) folder.remove_suffix(1);  // of a root
  if (path.size() < folder.size()) return false;
  const std::string_view start = path.substr(0, folder.size());
  const bool isSame = windows::kIsHere ? text::equalNoCase(start, folder) : start == folder;
  return isSame && (path.size() == folder.size() || path[folder.size()] == '/');
}

// A path of the machine in the system's form.
std::wstring fromRoot(std::wstring_view machine) { return mounts().system(text::toUtf8(machine)); }

// Do both name one program? Where the system finds it in any case and without its end, it is one in each of them.
bool isSameProgram(std::wstring_view a, std::wstring_view b) {
  return windows::kIsHere ? windows::programName(a) == windows::programName(b) : a == b;
}

bool isPath(std::wstring_view program) { return program.find_first_of(L"\\/") != program.npos; }

std::wstring_view withoutPort(std::wstring_view host) {
  const std::size_t colon = host.rfind(L':');
  const bool isPort = colon != host.npos && host.find(L']', colon) == host.npos;
  return isPort ? host.substr(0, colon) : host;
}

// Reads a command line as a shell does, as far as it takes to see whether it is one command.
class CommandReader {
 public:
  explicit CommandReader(std::wstring_view command) : command_(command) {}
  PlainCommand run() {
    for (; at_ < command_.size(); ++at_) take(command_[at_]);
    // A letter's colon stands second; behind anything else a path would be translated that isn't the one judged.
    const bool hasPathWithin = found_.program.find(L':', 2) != found_.program.npos;
    if (quote_ != 0 || hasPathWithin || isAssignment(found_.program)) found_.isPlain = false;
    if (windows::kIsHere && isRead()) found_.isPlain = false;
    return std::move(found_);
  }

 private:
  // By Windows: there "'" is a letter, and "%" and "^" mean more than themselves.
  [[nodiscard]] bool isRead() const {
    return windows::needsProcessor(command_) || command_.find(L'\'') != command_.npos;
  }
  void take(wchar_t c) {
    static constexpr std::wstring_view kOperators(L";&|<>()`$\n\r{}#!~\0", 17), kPatterns = L"*?[";
    const bool isBackslashedQuote = c == L'\\' && at_ + 1 < command_.size() && command_[at_ + 1] == L'"';
    if (quote_ != 0 && c == quote_) return endQuote();
    if (isBackslashedQuote && quote_ != L'\'') {
      // Behind a path the backslash is the path's, and the quote one of the shell's.
      found_.isPlain = false;
      ++at_;
      c = L'"';
    } else if (quote_ == L'"') {
      if (c == L'$' || c == L'`') found_.isPlain = false;
    } else if (quote_ == 0 && (c == L'"' || c == L'\'')) {
      return beginQuote(c);
    } else if (quote_ == 0 && (c == L' ' || c == L'\t')) {
      if (inProgram_) isBehind_ = true;
      return void(inProgram_ = false);
    } else if (quote_ == 0 && kOperators.find(c) != kOperators.npos) {
      found_.isPlain = false;
    }
    if (isBehind_) return;
    // A shell would fill them in, and start what nobody judged.
    if (quote_ == 0 && kPatterns.find(c) != kPatterns.npos) found_.isPlain = false;
    if (wasQuoted_ && quote_ == 0) found_.isPlain = false;
    inProgram_ = true;
    found_.program += c;
  }

  // Quotes stand around the whole program or not at all: a path is translated as far as they reach.
  void beginQuote(wchar_t c) {
    if (inProgram_) found_.isPlain = false;
    inProgram_ = inProgram_ || !isBehind_;
    quote_ = c;
  }
  void endQuote() {
    quote_ = 0;
    wasQuoted_ = true;
  }

  // "NAME=...", behind which a shell takes the next word for the program; so with "+=" and "[0]=" of some.
  static bool isAssignment(std::wstring_view word) {
    const auto isOfName = [](wchar_t c) {
      return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_';
    };
    if (word.empty() || !isOfName(word.front())) return false;
    const auto end = std::find_if_not(word.begin(), word.end(), isOfName);
    return end != word.end() && (*end == L'=' || *end == L'+' || *end == L'[') && word.find(L'=') != word.npos;
  }

  std::wstring_view command_;
  std::size_t at_ = 0;
  wchar_t quote_ = 0;
  bool inProgram_ = false, isBehind_ = false;
  bool wasQuoted_ = false;  // a quote has ended
  PlainCommand found_;
};

}  // namespace

std::wstring_view wordOf(Permission permission) {
  constexpr std::array<std::wstring_view, kPermissions.size()> kWords = {L"run",   L"net", L"read",
                                                                         L"write", L"env", L"clipboard"};
  return kWords.at(static_cast<std::size_t>(permission));
}

std::wstring grantText(const Need& need) {
  std::wstring text = L"allow-" + std::wstring(wordOf(need.permission));
  return need.permission == Permission::clipboard ? text : text + L"=" + need.resource;
}

// Strictly: where programs read an address in several ways, it names no server.
std::wstring hostOf(std::string_view address) {
  const std::size_t scheme = address.find("://");
  const std::string before = text::lower(std::string(address.substr(0, scheme)));
  if (scheme == address.npos || (before != "http" && before != "https")) return {};
  address.remove_prefix(scheme + 3);
  address = address.substr(0, address.find_first_of("/?#"));
  // Some take a backslash for the end of the server's name, others for a letter of the user's.
  if (address.find('\\') != address.npos) return {};
  const std::size_t at = address.rfind('@');
  if (at != address.npos) address.remove_prefix(at + 1);
  const auto isOdd = [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '%'; };
  if (std::any_of(address.begin(), address.end(), isOdd)) return {};
  const std::wstring host = text::lower(text::fromUtf8(address)), name(withoutPort(host));
  std::wstring port = host.substr(std::min(host.size(), name.size() + 1));
  const bool isInBrackets = name.starts_with(L'[') && name.ends_with(L']');
  if (name.empty() || (!isInBrackets && name.find(L':') != name.npos)) return {};
  if (port.find_first_not_of(L"0123456789") != port.npos) return {};
  const std::size_t first = port.find_first_not_of(L'0');
  if (first == port.npos && !port.empty()) return {};
  return port.empty() ? name : name + L":" + port.substr(first);
}

std::wstring hostAndPortOf(std::string_view address) {
  std::wstring host = hostOf(address);
  if (host.empty() || withoutPort(host).size() < host.size()) return host;
  return host + (text::lower(std::string(address.substr(0, 5))) == "http:" ? L":80" : L":443");
}

bool isServer(std::wstring_view resource) {
  return !resource.empty() && hostOf("https://" + text::toUtf8(resource)) == text::lower(resource);
}

PlainCommand plainCommand(std::wstring_view command) { return CommandReader(command).run(); }

Grants::Rule Grants::ruleOf(const Need& need) {
  Rule rule{need, {}, {}};
  const bool isPlace = need.permission == Permission::read || need.permission == Permission::write;
  if (isPlace || (need.permission == Permission::run && isPath(need.resource)))
    rule.path = machineBehindLinks(fromRoot(need.resource));
  if (need.permission == Permission::net) rule.need.resource = text::lower(need.resource);
  return rule;
}

void Grants::allow(const Need& need) { allowed_.push_back(ruleOf(need)); }
void Grants::deny(const Need& need) { denied_.push_back(ruleOf(need)); }

void Grants::ofPackage(std::wstring_view folder, const std::vector<Need>& allowed, const std::vector<Need>& denied) {
  const std::string package = machineBehindLinks(folder);
  const auto replace = [&package](std::vector<Rule>& rules, const std::vector<Need>& needs) {
    std::erase_if(rules, [&](const Rule& rule) { return rule.package == package; });
    for (const Need& need : needs) {
      rules.push_back(ruleOf(need));
      rules.back().package = package;
    }
  };
  replace(allowed_, allowed);
  replace(denied_, denied);
}

void Grants::openTo(Permission most, std::wstring_view folder) {
  std::string path = machineBehindLinks(folder);
  readable_.push_back(path);
  if (most == Permission::write) writable_.push_back(std::move(path));
}

void Grants::keepFromWriting(std::wstring_view path) {
  const bool isStart = path.ends_with(L'*');
  if (isStart) path.remove_suffix(1);
  const std::wstring folder = folderOf(path);
  std::string kept = machineBehindLinks(folder);
  kept_.push_back({(kept == "/" ? kept : kept + "/") + text::toUtf8(nameOf(path)), isStart});
}

void Grants::ownPackage(std::wstring_view folder) {
  package_ = machineBehindLinks(folder);
  reports_ = machineBehindLinks(joined(folder, L"reports"));
}

void Grants::startFrom(std::wstring_view folder) { programs_.push_back(machineBehindLinks(folder)); }

// The list's own names of things differ in their case alone where the disk tells them apart by it; what is kept is kept
// in every spelling.
bool Grants::isKept(std::string_view path) const {
  if (!reports_.empty() && isBelow(path, reports_)) return false;
  const std::string lower = text::lower(path);
  return std::any_of(kept_.begin(), kept_.end(), [&](const Kept& kept) {
    const std::string wanted = text::lower(kept.path);
    return kept.isStart ? lower.starts_with(wanted) : isBelow(lower, wanted);
  });
}

Verdict Grants::byRules(Permission permission, const auto& matches) const {
  return byRules(permission, matches, matches);
}

Verdict Grants::byRules(Permission permission, const auto& allows, const auto& denies) const {
  const auto any = [&](const std::vector<Rule>& rules, const auto& matches) {
    return std::any_of(rules.begin(), rules.end(), [&](const Rule& rule) {
      const bool isForAll = rule.package.empty();
      return rule.need.permission == permission && (isForAll || rule.package == package_) && matches(rule);
    });
  };
  if (any(denied_, denies)) return Verdict::denied;
  return any(allowed_, allows) ? Verdict::granted : Verdict::refused;
}

Verdict Grants::mayTouch(Permission permission, std::string_view path) const {
  const auto isIn = [&](const std::vector<std::string>& folders) {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const std::string& folder) { return isBelow(path, folder); });
  };
  const auto holds = [&](const Rule& rule) { return isBelow(path, rule.path); };
  if (permission == Permission::write && isKept(path)) return Verdict::kept;
  const Verdict verdict = byRules(permission, holds);
  const bool isOwn = isIn(permission == Permission::write ? writable_ : readable_);
  return isOwn && verdict != Verdict::denied ? Verdict::own : verdict;
}

Verdict Grants::mayRead(std::string_view path) const { return mayTouch(Permission::read, path); }
Verdict Grants::mayWrite(std::string_view path) const { return mayTouch(Permission::write, path); }

// What anybody put somewhere under a granted name isn't the program that was meant.
bool Grants::isStartedByName(const std::string& file) const {
  const bool isBrought = !package_.empty() && isBelow(file, package_);
  const bool isTools =
      std::any_of(programs_.begin(), programs_.end(), [&](const std::string& folder) { return isBelow(file, folder); });
  return (isBrought || isTools) && !isOpen(mayWrite(file));
}

Verdict Grants::mayRun(std::wstring_view program) const {
  const std::string file = isPath(program) ? machineBehindLinks(program) : std::string();
  const std::wstring name = nameOf(program), target = nameOf(text::fromUtf8(file));
  const bool byName = file.empty() || isStartedByName(file);
  const auto isThatFile = [&](const Rule& rule) { return !rule.path.empty() && rule.path == file; };
  const auto allows = [&](const Rule& rule) {
    return rule.path.empty() ? byName && isSameProgram(rule.need.resource, name) : isThatFile(rule);
  };
  const auto denies = [&](const Rule& rule) {
    const std::wstring denied = nameOf(rule.need.resource);
    return isSameProgram(denied, name) || (rule.path.empty() && isSameProgram(denied, target)) || isThatFile(rule);
  };
  return byRules(Permission::run, allows, denies);
}

Verdict Grants::mayAsk(std::wstring_view host) const {
  return byRules(Permission::net, [&](const Rule& rule) {
    return !host.empty() && (rule.need.resource == host || rule.need.resource == withoutPort(host));
  });
}

// In any spelling: the environment is asked so.
Verdict Grants::maySet(std::wstring_view variable) const {
  return byRules(Permission::env, [&](const Rule& rule) { return text::equalNoCase(rule.need.resource, variable); });
}

Verdict Grants::mayPaste() const {
  return byRules(Permission::clipboard, [](const Rule&) { return true; });
}

bool Grants::covers(const Need& need) const {
  const auto place = [&need] { return machineBehindLinks(fromRoot(need.resource)); };
  switch (need.permission) {
    case Permission::run:
      return isOpen(mayRun(isPath(need.resource) ? fromRoot(need.resource) : need.resource));
    case Permission::net:
      return isOpen(mayAsk(need.resource));
    case Permission::read:
      return isOpen(mayRead(place()));
    case Permission::write:
      return isOpen(mayWrite(place()));
    case Permission::env:
      return isOpen(maySet(need.resource));
    case Permission::clipboard:
      return isOpen(mayPaste());
  }
  return false;
}

}  // namespace os
