#include "os/windows_rules.h"

#include <algorithm>
#include <array>

#include "text/letters.h"

namespace os::windows {
namespace {

constexpr std::wstring_view kPrefix = L"\\\\?\\", kServerPrefix = L"\\\\?\\UNC\\";

bool isSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }
bool isLetter(wchar_t c) { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }
bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

std::wstring with(wchar_t separator, std::wstring_view path) {
  std::wstring result(path);
  std::replace_if(result.begin(), result.end(), &isSeparator, separator);
  return result;
}

template <std::size_t Size>
bool isOneOf(const std::array<std::wstring_view, Size>& words, std::wstring_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

// Also with something behind a dot or with blanks before it; the digits may be superscript ones.
bool isDevice(std::wstring_view name) {
  static constexpr std::array<std::wstring_view, 6> kDevices = {L"con", L"prn", L"aux", L"nul", L"conin$", L"conout$"};
  std::wstring start = text::lower(name.substr(0, name.find(L'.')));
  while (start.ends_with(L' ')) start.pop_back();
  if (isOneOf(kDevices, start)) return true;
  if (start.size() != 4 || (!start.starts_with(L"com") && !start.starts_with(L"lpt"))) return false;
  const wchar_t digit = start[3];
  return isDigit(digit) || digit == L'\u00B9' || digit == L'\u00B2' || digit == L'\u00B3';
}

bool isDrive(std::wstring_view path) { return path.size() >= 2 && isLetter(path[0]) && path[1] == L':'; }
bool isServer(std::wstring_view path) { return path.size() > 2 && isSeparator(path[0]) && isSeparator(path[1]); }

}  // namespace

std::wstring_view trimmed(std::wstring_view name) {
  const std::size_t last = name.find_last_not_of(L" .");
  return last == name.npos ? name : name.substr(0, last + 1);
}

NameKind kindOf(std::wstring_view name) {
  static constexpr std::wstring_view kNowhere = L"<>\"|?*/\\";
  if (name.find(L':') != name.npos) return NameKind::stream;
  const auto isNowhere = [](wchar_t c) { return c < 0x20 || kNowhere.find(c) != kNowhere.npos; };
  if (std::any_of(name.begin(), name.end(), isNowhere)) return NameKind::impossible;
  const bool endsInNothing = !name.empty() && (name.back() == L' ' || name.back() == L'.');
  return endsInNothing || isDevice(name) ? NameKind::reserved : NameKind::plain;
}

std::size_t rootLength(std::wstring_view machine) {
  if (isDrive(machine)) return std::min<std::size_t>(machine.size(), 3);
  if (!isServer(machine)) return std::min<std::size_t>(machine.size(), 1);
  const std::size_t server = machine.find(L'/', 2);
  return std::min(machine.size(), server == machine.npos ? server : machine.find(L'/', server + 1));
}

bool isWhole(std::wstring_view machine) {
  return isServer(machine) || (isDrive(machine) && machine.size() > 2 && isSeparator(machine[2]));
}

NameKind kindOfPath(std::wstring_view machine) {
  const std::wstring_view root = machine.substr(0, rootLength(machine));
  if (root.starts_with(L"//.") || root.starts_with(L"//?")) return NameKind::reserved;  // names of devices
  machine.remove_prefix(root.size());
  NameKind worst = NameKind::plain;
  while (!machine.empty()) {
    const std::wstring_view name = machine.substr(0, machine.find(L'/'));
    worst = std::max(worst, kindOf(name));
    machine.remove_prefix(std::min(name.size() + 1, machine.size()));
  }
  return worst;
}

std::wstring extended(std::wstring_view machine) {
  std::wstring path = with(L'\\', machine);
  if (path.starts_with(kPrefix)) return path;
  if (isServer(path)) return std::wstring(kServerPrefix) + path.substr(2);
  return std::wstring(kPrefix) + path;
}

std::wstring machineForm(std::wstring_view path) {
  std::wstring result = with(L'/', path);
  if (text::startsWithNoCase(result, with(L'/', kServerPrefix))) {
    result = L"//" + result.substr(kServerPrefix.size());
  } else if (result.starts_with(with(L'/', kPrefix)) && isDrive(std::wstring_view(result).substr(kPrefix.size()))) {
    result.erase(0, kPrefix.size());
  }
  if (isDrive(result)) {
    result[0] = text::upper(result[0]);
    if (result.size() == 2) result += L'/';
  }
  while (result.size() > rootLength(result) && result.ends_with(L'/')) result.pop_back();
  return result;
}

std::wstring forPrograms(std::wstring_view machine) { return with(L'\\', machineForm(machine)); }

std::wstring quoted(std::wstring_view argument) {
  if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == argument.npos) return std::wstring(argument);
  std::wstring result = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'"') result.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    result += c;
  }
  return result.append(backslashes, L'\\') + L"\"";
}

std::wstring withPaths(std::wstring_view command,
                       const std::function<std::optional<std::wstring>(std::wstring_view path)>& path) {
  static constexpr std::wstring_view kEnds = L" \t\r\n\"|&;<>()^,=", kPlainAsIs = L" \t&()[]{}^=;!'+,`~";
  std::wstring result;
  bool inQuotes = false;
  for (std::size_t at = 0; at < command.size();) {
    const bool inWord = at > 0 && (isLetter(command[at - 1]) || isDigit(command[at - 1]));
    const bool begins =
        !inWord && isDrive(command.substr(at)) && at + 2 < command.size() && isSeparator(command[at + 2]);
    if (!begins) {
      inQuotes = inQuotes != (command[at] == L'"');
      result += command[at++];
      continue;
    }
    const std::size_t end =
        std::min(inQuotes ? command.find(L'"', at) : command.find_first_of(kEnds, at), command.size());
    const std::wstring_view given = command.substr(at, end - at);
    const std::wstring found = path(given).value_or(std::wstring(given));
    const bool needsQuotes = !inQuotes && found.find_first_of(kPlainAsIs) != found.npos;
    result += needsQuotes ? L"\"" + found + L"\"" : found;
    at = end;
  }
  return result;
}

FirstWord firstWord(std::wstring_view command) {
  FirstWord first;
  std::size_t at = std::min(command.find_first_not_of(L" \t"), command.size());
  bool inQuotes = false;
  for (; at < command.size() && (inQuotes || (command[at] != L' ' && command[at] != L'\t')); ++at) {
    if (command[at] == L'"')
      inQuotes = !inQuotes;
    else
      first.word += command[at];
  }
  first.end = at;
  return first;
}

bool needsProcessor(std::wstring_view command) {
  bool inQuotes = false;
  for (const wchar_t c : command) {
    if (c == L'"') inQuotes = !inQuotes;
    if (c == L'%' || c == L'\n' || c == L'\r') return true;
    if (!inQuotes && std::wstring_view(L"&|<>()^!").find(c) != std::wstring_view::npos) return true;
  }
  return false;
}

bool isBuiltIn(std::wstring_view word) {
  static constexpr std::array<std::wstring_view, 44> kBuiltIn = {
      L"assoc",  L"break", L"call", L"cd",       L"chdir",  L"cls",    L"color",  L"copy",  L"date",
      L"del",    L"dir",   L"echo", L"endlocal", L"erase",  L"exit",   L"for",    L"ftype", L"goto",
      L"if",     L"keys",  L"md",   L"mkdir",    L"mklink", L"move",   L"path",   L"pause", L"popd",
      L"prompt", L"pushd", L"rd",   L"rem",      L"ren",    L"rename", L"rmdir",  L"set",   L"setlocal",
      L"shift",  L"start", L"time", L"title",    L"type",   L"ver",    L"verify", L"vol"};
  const std::wstring lower = text::lower(word);
  // "cd\" and "echo." are them too.
  return isOneOf(kBuiltIn, std::wstring_view(lower).substr(0, lower.find_first_of(L".\\/:,;=+[]")));
}

std::wstring programName(std::wstring_view name) {
  static constexpr std::array<std::wstring_view, 4> kPrograms = {L".exe", L".com", L".bat", L".cmd"};
  std::wstring lower = text::lower(trimmed(name));
  for (const std::wstring_view end : kPrograms) {
    if (lower.size() <= end.size() || !lower.ends_with(end)) continue;
    lower.resize(lower.size() - end.size());
    break;
  }
  return lower;
}

}  // namespace os::windows
