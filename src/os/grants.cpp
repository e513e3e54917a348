#include "os/grants.h"

#include <algorithm>

#include "os/links.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace os {
namespace {

using Verdict = Grants::Verdict;

bool isBelow(std::string_view path, std::string_view folder) {
  if (folder == "/") return true;
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

// A path of the machine in the system's form.
std::wstring fromRoot(std::wstring_view machine) { return L"z:" + withBackslashes(machine); }

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
    if (quote_ != 0) found_.isPlain = false;
    return std::move(found_);
  }

 private:
  void take(wchar_t c) {
    static constexpr std::wstring_view kOperators = L";&|<>()`$\n\r{}#!~";
    const bool isBackslashedQuote = c == L'\\' && at_ + 1 < command_.size() && command_[at_ + 1] == L'"';
    if (quote_ == L'\'') {
      if (c == quote_) return void(quote_ = 0);
    } else if (isBackslashedQuote) {
      // What takes the place of a quote, and what of a separator, is settled where paths are translated.
      ++at_;
      c = L'"';
    } else if (quote_ == L'"') {
      if (c == quote_) return void(quote_ = 0);
      if (c == L'$' || c == L'`') found_.isPlain = false;
    } else if (c == L'"' || c == L'\'') {
      inProgram_ = inProgram_ || !isBehind_;
      return void(quote_ = c);
    } else if (c == L' ' || c == L'\t') {
      if (inProgram_) isBehind_ = true;
      return void(inProgram_ = false);
    } else if (kOperators.find(c) != kOperators.npos) {
      found_.isPlain = false;
    }
    if (isBehind_) return;
    inProgram_ = true;
    found_.program += c;
  }

  std::wstring_view command_;
  std::size_t at_ = 0;
  wchar_t quote_ = 0;
  bool inProgram_ = false, isBehind_ = false;
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
  return text::lower(text::fromUtf8(address));
}

PlainCommand plainCommand(std::wstring_view command) { return CommandReader(command).run(); }

Grants::Rule Grants::ruleOf(const Need& need) {
  Rule rule{need, {}};
  const bool isPlace = need.permission == Permission::read || need.permission == Permission::write;
  if (isPlace || (need.permission == Permission::run && isPath(need.resource)))
    rule.path = machineBehindLinks(fromRoot(need.resource));
  if (need.permission == Permission::net) rule.need.resource = text::lower(need.resource);
  return rule;
}

void Grants::allow(const Need& need) { allowed_.push_back(ruleOf(need)); }
void Grants::deny(const Need& need) { denied_.push_back(ruleOf(need)); }

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

void Grants::exceptReports(std::wstring_view folder) { reports_ = machineBehindLinks(folder); }

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
  const auto any = [&](const std::vector<Rule>& rules) {
    return std::any_of(rules.begin(), rules.end(),
                       [&](const Rule& rule) { return rule.need.permission == permission && matches(rule); });
  };
  if (any(denied_)) return Verdict::denied;
  return any(allowed_) ? Verdict::granted : Verdict::refused;
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

Verdict Grants::mayRun(std::wstring_view program) const {
  if (!isPath(program))
    return byRules(Permission::run, [&](const Rule& rule) { return rule.need.resource == program; });
  const std::string file = machineBehindLinks(program);
  const std::wstring name = nameOf(program);
  const bool isListsOwn = isOpen(mayWrite(file));
  return byRules(Permission::run, [&](const Rule& rule) {
    return rule.path.empty() ? !isListsOwn && rule.need.resource == name : rule.path == file;
  });
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
