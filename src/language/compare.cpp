#include "language/compare.h"

#include <algorithm>

#include "language/comparison_watch.h"
#include "language/expressions.h"
#include "language/pattern_kind.h"
#include "text/letters.h"

namespace language {
namespace {

// Equality without regard to case, of ASCII letters and the three umlauts. The two cases of each differ in one bit.
bool sameLetter(std::wstring_view a, std::size_t i, std::wstring_view b, std::size_t j) {
  return a[i] == b[j] || ((a[i] ^ b[j]) == 0x20 && text::lower(a[i]) == text::lower(b[j]));
}
bool sameLetter(std::string_view a, std::size_t i, std::string_view b, std::size_t j) {
  const auto at = [](std::string_view text, std::size_t k) { return foldedByte(text[k], k > 0 ? text[k - 1] : '\0'); };
  return a[i] == b[j] || ((a[i] ^ b[j]) == 0x20 && at(a, i) == at(b, j));
}

bool equalFolded(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!sameLetter(a, i, b, i)) return false;
  return true;
}

// Anchored and case-blind: "**" is a star, any other "*" a run of characters other than line feeds; a line feed that
// ends the text may stand there unmatched. That is what PCRE2 makes of "^(?i)", the text with ".*" for the runs, "$".
//
// Only the last run is ever widened: where a run can grow up to a later place of what follows it, the earlier place
// leaves no fewer ways to go on.
template <class View>
bool wildcardMatches(View pattern, View text) {
  std::size_t p = 0, t = 0;
  std::size_t behindRun = View::npos,
              runEnd = 0;  // the last run: what follows it in the pattern; where it ends in the text
  const auto rest = [&](std::size_t at) { return text.size() - at; };
  while (true) {
    if (p == pattern.size()) {
      if (rest(t) == 0 || (rest(t) == 1 && text[t] == '\n')) return true;
    } else if (pattern[p] == '*' && !(p + 1 < pattern.size() && pattern[p + 1] == '*')) {
      behindRun = ++p;
      runEnd = t;
      continue;
    } else if (t < text.size() && sameLetter(pattern, p, text, t)) {
      p += pattern[p] == '*' ? 2 : 1;
      ++t;
      continue;
    }
    if (behindRun == View::npos || runEnd == text.size() || text[runEnd] == '\n') return false;
    p = behindRun;
    t = ++runEnd;
  }
}

constexpr int kMatch = 1, kNone = 0, kRefused = -1, kGivenUp = -2;

int asNumber(Answer answer) {
  if (answer == Answer::unfinished) return kGivenUp;
  return answer == Answer::match ? kMatch : kNone;
}

int compared(std::wstring_view pattern, std::wstring_view text) {
  switch (kindOf(pattern)) {
    case PatternKind::plain:
      return text::equalNoCase(pattern, text) ? 1 : 0;
    case PatternKind::wildcard:
      return wildcardMatches(pattern, text) ? 1 : 0;
    case PatternKind::expression:
      break;
  }
  const UserExpression* expression = keptExpression(pattern);
  if (!expression) return kRefused;
  static std::string narrow;
  narrowInto(narrow, text);
  if (expression->foldsText) foldUmlauts(narrow);
  return asNumber(expression->code.match(narrow));
}

Compared noted(int result) {
  if (result == kGivenUp) return Compared::givenUp;
  return result == kMatch ? Compared::match : Compared::none;
}

}  // namespace

int wildcardCompare(std::wstring_view pattern, std::wstring_view text) {
  const int result = compared(pattern, text);
  if (result == kRefused) noteRefused(pattern);
  if (result == kGivenUp) noteGivenUp(pattern, text);
  if (ComparisonWatch::on()) ComparisonWatch::note(pattern, text, noted(result));
  return result;
}

int narrowCompare(std::string_view pattern, std::string_view text) {
  switch (kindOf(pattern)) {
    case PatternKind::plain:
      return equalFolded(pattern, text) ? 1 : 0;
    case PatternKind::wildcard:
      return wildcardMatches(pattern, text) ? 1 : 0;
    case PatternKind::expression:
      break;
  }
  if (pattern.size() < 3) return kRefused;
  const std::string_view between = pattern.substr(1, pattern.size() - 2);
  if (!isCaseBlind(between)) return regexMatch(between, text);
  std::string foldedExpression(between), foldedText(text);
  foldUmlauts(foldedExpression);
  foldUmlauts(foldedText);
  return regexMatch(foldedExpression, foldedText);
}

int regexMatch(std::string_view expression, std::string_view text) {
  static PatternCache<char, Expression> cache;
  const Expression& kept = cache.get(expression, [](std::string_view e) { return Expression(e); });
  return kept.compiled() ? asNumber(kept.match(text)) : kRefused;
}

std::wstring secondWord(std::wstring_view text) {
  const auto blank = text.find(L' ');
  if (blank == std::wstring_view::npos) return {};
  text.remove_prefix(blank + 1);
  return std::wstring(text.substr(0, text.find(L' ')));
}

}  // namespace language
