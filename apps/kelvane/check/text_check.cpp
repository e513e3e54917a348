#include "kelvane/check/text_check.h"

#include <algorithm>

#include "kelvane/base/nearest.h"
#include "language/compare.h"
#include "language/expressions.h"
#include "language/known_tokens.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

constexpr std::wstring_view kSigns = L"%\u00A7";
constexpr std::wstring_view kFunctionSign = L"$$", kReplace = L"repl";

bool isLetter(wchar_t c) { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_'; }

std::vector<std::string> narrowed(std::span<const std::wstring_view> words) {
  std::vector<std::string> all;
  for (const std::wstring_view word : words) all.push_back(text::toUtf8(word));
  return all;
}

bool isKnown(std::span<const std::wstring_view> words, std::wstring_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

// "@word@" of letters, which nothing else than a token looks like.
void findTokens(std::wstring_view text, std::vector<std::string>& faults) {
  for (std::size_t at = text.find(L'@'); at != text.npos;) {
    std::size_t end = at + 1;
    while (end < text.size() && isLetter(text[end])) ++end;
    if (end == at + 1 || end == text.size() || text[end] != L'@') {
      at = text.find(L'@', at + 1);
      continue;
    }
    const std::wstring_view token = text.substr(at, end + 1 - at);
    if (!isKnown(language::knownTokens(), token)) {
      const std::string shown = text::toUtf8(token);
      faults.push_back("unknown token '" + shown + "'" + didYouMean(shown, narrowed(language::knownTokens())));
    }
    at = text.find(L'@', end + 1);
  }
}

// What "$$repl$" looks for: up to a sign, "$!" standing for the sign itself.
void findExpression(std::wstring_view arguments, std::vector<std::string>& faults) {
  std::size_t end = arguments.find(L'$');
  while (end != arguments.npos && arguments.substr(end + 1).starts_with(L'!')) end = arguments.find(L'$', end + 1);
  const std::wstring pattern = text::replaceAll(std::wstring(arguments.substr(0, end)), L"$!", L"$");
  if (std::string fault = expressionFault(pattern); !fault.empty()) faults.push_back(std::move(fault));
}

// A known function runs to the next "$$"; what merely closes nothing is dropped by the engine without harm.
void findFunctions(std::wstring_view text, std::vector<std::string>& faults) {
  if (text.starts_with(L'/') && text.ends_with(L'/')) return;  // the sign is an expression's there
  for (std::size_t at = text.find(kFunctionSign); at != text.npos; at = text.find(kFunctionSign, at)) {
    at += kFunctionSign.size();
    std::size_t end = at;
    while (end < text.size() && isLetter(text[end])) ++end;
    if (end == at || end == text.size() || text[end] != L'$') continue;
    const std::wstring_view name = text.substr(at, end - at);
    if (name == kReplace) findExpression(text.substr(end + 1), faults);
    if (!isKnown(language::knownFunctions(), name)) {
      const std::string shown = text::toUtf8(name);
      faults.push_back("unknown text function '$$" + shown + "$'" +
                       didYouMean(shown, narrowed(language::knownFunctions())));
    } else {
      const std::size_t close = text.find(kFunctionSign, end);
      if (close == text.npos) return;
      at = close + kFunctionSign.size();
    }
  }
}

// A name ends at its closing sign, and a blank before it says that the sign was just a sign.
template <class F>
void eachName(std::wstring_view text, wchar_t sign, F f) {
  for (std::size_t at = text.find(sign); at != text.npos; at = text.find(sign, at + 1)) {
    const std::size_t end = text.find_first_of(std::wstring({sign, L' '}), at + 1);
    if (end == text.npos || text[end] != sign || end == at + 1) continue;
    f(text.substr(at + 1, end - at - 1));
    at = end;
  }
}

// Each once, and never the whole name. Was there one?
bool takePrefixes(std::wstring_view& name, std::span<const std::wstring_view> prefixes) {
  const std::size_t before = name.size();
  for (const std::wstring_view prefix : prefixes)
    if (name.size() > prefix.size() && text::startsWithNoCase(name, prefix)) name.remove_prefix(prefix.size());
  return name.size() < before;
}

// A line break ends no name: it becomes a part of it.
void findBrokenNames(std::wstring_view text, std::vector<std::string>& faults) {
  for (const wchar_t sign : kSigns) {
    eachName(text, sign, [&](std::wstring_view name) {
      const std::size_t broken = name.find_first_of(L"\r\n");
      if (broken == name.npos) return;
      faults.push_back("a line break stands inside a name between two '" + text::toUtf8(std::wstring(1, sign)) +
                       "', behind '" + text::toUtf8(name.substr(0, broken)) + "'; only a blank ends such a name");
    });
  }
}

}  // namespace

std::vector<std::string> templateFaults(std::wstring_view text) {
  std::vector<std::string> faults;
  findTokens(text, faults);
  findFunctions(text, faults);
  findBrokenNames(text, faults);
  return faults;
}

std::vector<std::string> unknownTokens(std::wstring_view text) {
  std::vector<std::string> faults;
  findTokens(text, faults);
  return faults;
}

std::vector<std::string> namedParameters(std::wstring_view text) {
  std::vector<std::string> names;
  eachName(text, L'%', [&](std::wstring_view name) {
    for (const wchar_t* other : {L"user:", L"b64:", L"b64uc:"})
      if (text::startsWithNoCase(name, other)) return;
    names.push_back("%" + text::toUtf8(name) + "%");
  });
  return names;
}

std::vector<std::string> namedUserVariables(std::wstring_view text) {
  // What may stand before "user:", and between it and the name, in the engine's order.
  constexpr std::wstring_view kOwners[] = {L"curmod:", L"curmat:"}, kUser[] = {L"user:"};
  constexpr std::wstring_view kChanges[] = {L"b64:",     L"b64uc:",  L"length:", L"toupper:",
                                            L"tolower:", L"nozero:", L"dubase:"};
  std::vector<std::string> names;
  eachName(text, L'%', [&](std::wstring_view name) {
    takePrefixes(name, kOwners);
    if (!takePrefixes(name, kUser)) return;
    takePrefixes(name, kChanges);
    names.push_back("%" + text::toUtf8(name) + "%");
  });
  return names;
}

bool hasVariables(std::wstring_view text) {
  if (text.find(kFunctionSign) != text.npos && !(text.starts_with(L'/') && text.ends_with(L'/'))) return true;
  for (const wchar_t sign : std::wstring(kSigns) + L'@') {
    const std::size_t first = text.find(sign);
    if (first != text.npos && text.find(sign, first + 1) != text.npos) return true;
  }
  return false;
}

std::string patternFault(std::wstring_view text) {
  const auto fault = language::expressionFault(text);
  if (!fault) return {};
  if (text.size() < 3) return "an expression that holds nothing";
  return "an expression that doesn't compile (" + text::toUtf8(fault.what) + ")";
}

std::string expressionFault(std::wstring_view text) {
  const std::string fault = text.size() < 3 || hasVariables(text) ? std::string() : patternFault(text);
  return fault.empty() ? fault : fault + ": '" + text::toUtf8(text) + "'";
}

std::string refusal(const language::RefusedExpression& refused) {
  return "the expression '" + text::toUtf8(refused.pattern) + "' doesn't compile (" + refused.reason +
         "), so that it matches nothing";
}

bool isInteger(std::wstring_view text) { return language::matches(language::kIntegerPattern, text); }

bool isReadAsNumber(std::wstring_view text) { return language::matches(language::kDoublePattern, text); }

bool isNumber(std::wstring_view text) {
  return language::matches(L"/^-?(\\d+\\.?\\d*|\\.\\d+)([eE][-+]?\\d+)?$/", text);
}

}  // namespace kelvane
