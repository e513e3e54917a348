// Replacing what a pattern matches. The definition tries, at each place, the whole rest of the text and then one
// character less each time; here each kind of pattern finds the same longest piece in fewer steps.
#include <algorithm>
#include <vector>

#include "language/compare.h"
#include "language/comparison_watch.h"
#include "language/expressions.h"
#include "language/pattern_kind.h"
#include "text/code_points.h"
#include "text/letters.h"

namespace language {
namespace {

constexpr std::size_t kNone = std::wstring_view::npos;

// Where the longest match that begins at a place ends; asked with ascending places.
class PlainScan {
 public:
  PlainScan(std::wstring_view pattern, std::wstring_view text)
      : pattern_(text::lower(pattern)), text_(text::lower(text)) {}
  std::size_t longestFrom(std::size_t from) const {
    return !pattern_.empty() && text_.compare(from, pattern_.size(), pattern_) == 0 ? from + pattern_.size() : kNone;
  }

 private:
  std::wstring pattern_, text_;
};

// The pieces between the runs are looked for at their earliest places, the last one at its latest. As places ascend,
// so do the places of the pieces: each is searched for over the text once.
class WildcardScan {
 public:
  WildcardScan(std::wstring_view pattern, std::wstring_view text) : text_(text::lower(text)), pieces_(1) {
    for (std::size_t p = 0; p < pattern.size(); ++p) {
      const bool star = pattern[p] == L'*';
      if (star && p + 1 < pattern.size() && pattern[p + 1] == L'*')
        pieces_.back().letters += pattern[++p];
      else if (star)
        pieces_.emplace_back();
      else
        pieces_.back().letters += text::lower(pattern[p]);
    }
    for (auto at = text_.find(L'\n'); at != kNone; at = text_.find(L'\n', at + 1)) lineFeeds_.push_back(at);
  }

  std::size_t longestFrom(std::size_t from) {
    const std::wstring& head = pieces_.front().letters;
    if (text_.compare(from, head.size(), head) != 0) return kNone;
    std::size_t end = from + head.size();
    for (std::size_t i = 1; i < pieces_.size(); ++i) {
      const bool last = i + 1 == pieces_.size();
      const std::size_t lineEnd = lineEndFrom(end);
      const std::size_t at = last ? latest(pieces_[i], end, lineEnd) : earliest(pieces_[i], end);
      if (at == kNone || at > lineEnd) return kNone;  // no run goes over a line feed
      end = at + pieces_[i].letters.size();
    }
    return end < text_.size() && text_[end] == L'\n' ? end + 1 : end;
  }

 private:
  struct Piece {
    std::wstring letters;
    bool searched = false;
    std::size_t found = 0;  // by the last search; kNone when there was none
    std::size_t lineEnd = 0;
  };

  std::size_t lineEndFrom(std::size_t from) const {
    const auto found = std::lower_bound(lineFeeds_.begin(), lineFeeds_.end(), from);
    return found == lineFeeds_.end() ? text_.size() : *found;
  }
  std::size_t earliest(Piece& piece, std::size_t from) const {
    if (!piece.searched || (piece.found != kNone && piece.found < from)) piece.found = text_.find(piece.letters, from);
    piece.searched = true;
    return piece.found;
  }
  // The last place from `from` to the end of the line.
  std::size_t latest(Piece& piece, std::size_t from, std::size_t lineEnd) const {
    if (!piece.searched || piece.lineEnd != lineEnd) {
      const auto found = std::wstring_view(text_).substr(from).rfind(piece.letters, lineEnd - from);
      piece.found = found == kNone ? kNone : found + from;
      piece.lineEnd = lineEnd;
      piece.searched = true;
    }
    return piece.found != kNone && piece.found < from ? kNone : piece.found;
  }

  std::wstring text_;
  std::vector<Piece> pieces_;
  std::vector<std::size_t> lineFeeds_;
};

// Whether an expression's answer can hang on where the text begins or ends, beyond the need that a match lies in it.
// Without the first, what has no match has none from any later place either; without the second, what matches goes on
// matching with more text behind it. What isn't surely harmless counts as both.
struct Sensitivity {
  bool toStart = false, toEnd = false;
};
constexpr Sensitivity kBoth{true, true};

// The place behind a character class, or npos for one that isn't plain enough to tell.
std::size_t behindClass(std::string_view expression, std::size_t at) {
  ++at;
  if (at < expression.size() && expression[at] == '^') ++at;
  if (at < expression.size() && expression[at] == ']') ++at;
  for (; at < expression.size() && expression[at] != ']'; ++at) {
    if (expression[at] == '[') return kNone;
    if (expression[at] != '\\') continue;
    if (++at < expression.size() && (expression[at] == 'Q' || expression[at] == 'E')) return kNone;
  }
  return at < expression.size() ? at + 1 : kNone;
}

Sensitivity sensitivityOf(std::string_view expression) {
  constexpr std::string_view kHarmlessEscapes = "dDsSwWnrtfea";
  constexpr std::size_t kGroupsWithOffsets = 80;
  if (static_cast<std::size_t>(std::count(expression.begin(), expression.end(), '(')) > kGroupsWithOffsets)
    return kBoth;
  Sensitivity found;
  bool behindQuantifier = false;
  for (std::size_t at = 0; at < expression.size();) {
    const char c = expression[at];
    const bool quantifier = c == '*' || c == '+' || c == '?' || c == '}';
    const std::string_view rest = expression.substr(at);
    if (c == '+' && behindQuantifier) return kBoth;  // takes all it can and gives nothing back
    behindQuantifier = quantifier;
    if (c == '\\') {
      const char escaped = rest.size() > 1 ? rest[1] : 'z';
      const bool letter = (escaped >= 'a' && escaped <= 'z') || (escaped >= 'A' && escaped <= 'Z') ||
                          (escaped >= '0' && escaped <= '9');
      if (letter && kHarmlessEscapes.find(escaped) == kNone) return kBoth;
      at += 2;
    } else if (c == '[') {
      at = behindClass(expression, at);
      if (at == kNone) return kBoth;
    } else if (c == '(' && rest.size() > 1 && (rest[1] == '?' || rest[1] == '*')) {
      if (!rest.starts_with("(?:") && !rest.starts_with("(?i)")) return kBoth;
      at += 3;
    } else {
      found.toStart |= c == '^';
      found.toEnd |= c == '$';
      ++at;
    }
  }
  return found;
}

class ExpressionScan {
 public:
  ExpressionScan(const UserExpression& expression, Sensitivity sensitivity, std::wstring_view text)
      : code_(expression.code), toEnd_(sensitivity.toEnd), anchored_(expression.code.anchored()) {
    std::string letter;
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t length = text::codePointAt(text, at).length;
      offsets_.insert(offsets_.end(), length, bytes_.size());
      narrowInto(letter, text.substr(at, length));
      bytes_ += letter;
      at += length;
    }
    offsets_.push_back(bytes_.size());
    if (expression.foldsText) foldUmlauts(bytes_);
  }

  [[nodiscard]] bool givenUp() const { return effort_.givenUp(); }
  std::size_t longestFrom(std::size_t from) {
    const std::size_t size = offsets_.size() - 1;
    if (!toEnd_) return matches(from, size) ? size : kNone;
    for (std::size_t end = lastEndWorthTrying(from); end > from && !givenUp(); --end)
      if (endsCharacter(end) && matches(from, end)) return end;
    return kNone;
  }

 private:
  // False between the halves of a pair of surrogates, which have one place in the bytes.
  [[nodiscard]] bool endsCharacter(std::size_t end) const { return offsets_[end] != offsets_[end - 1]; }

  std::string_view piece(std::size_t from, std::size_t end) const {
    return std::string_view(bytes_).substr(offsets_[from], offsets_[end] - offsets_[from]);
  }

  // Once the effort is given up nothing matches: whether a longer piece would have isn't known then.
  bool matches(std::size_t from, std::size_t end) { return code_.match(piece(from, end), effort_) == Answer::match; }

  // An anchored expression mostly refuses after a few characters, whatever follows them; doubling finds how many.
  std::size_t lastEndWorthTrying(std::size_t from) {
    const std::size_t size = offsets_.size() - 1;
    for (std::size_t length = 2; anchored_ && length < size - from && !givenUp(); length *= 2)
      if (code_.refusesAllThatStartWith(piece(from, from + length), effort_)) return from + length - 1;
    return size;
  }

  const Expression& code_;
  const bool toEnd_, anchored_;
  std::string bytes_;
  std::vector<std::size_t> offsets_;  // where the character of each wchar_t begins in bytes_, and the end
  Effort effort_;                     // of all the tries of one replacement
};

// once: the first match, sought from the start of the text, is the only one.
template <class Scan>
std::wstring replaced(std::wstring_view text, std::wstring_view replacement, Scan& scan, bool once = false) {
  std::wstring out;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t end = scan.longestFrom(at);
    if (end != kNone) {
      out += replacement;
      at = end;
    }
    if (once) break;
    if (end != kNone) continue;
    const std::size_t length = text::codePointAt(text, at).length;
    out += text.substr(at, length);
    at += length;
  }
  return out += text.substr(at);
}

}  // namespace

std::wstring patternReplace(std::wstring_view text, std::wstring_view pattern, std::wstring_view replacement) {
  switch (kindOf(pattern)) {
    case PatternKind::plain: {
      PlainScan scan(pattern, text);
      return replaced(text, replacement, scan);
    }
    case PatternKind::wildcard: {
      WildcardScan scan(pattern, text);
      return replaced(text, replacement, scan);
    }
    case PatternKind::expression:
      break;
  }
  const UserExpression* expression = keptExpression(pattern);
  if (!expression) {
    noteRefused(pattern);
    return std::wstring(text);
  }
  std::string between;
  narrowInto(between, pattern.substr(1, pattern.size() - 2));
  const Sensitivity sensitivity = sensitivityOf(between);
  ExpressionScan scan(*expression, sensitivity, text);
  std::wstring out = replaced(text, replacement, scan, !sensitivity.toStart);
  if (!scan.givenUp()) return out;
  noteGivenUp(pattern, text);
  return std::wstring(text);
}

}  // namespace language
