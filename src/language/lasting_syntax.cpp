#include "language/lasting_syntax.h"

#include <algorithm>
#include <utility>

namespace language {
namespace {

bool isOneOf(char c, std::string_view letters) { return letters.find(c) != std::string_view::npos; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The length of "{n}", "{n,}" or "{n,m}" at the start; 0: there is none.
std::size_t quantifierLength(std::string_view text) {
  std::size_t at = 1;
  const auto digits = [&] {
    const std::size_t first = at;
    while (at < text.size() && isDigit(text[at])) ++at;
    return at > first;
  };
  if (!digits()) return 0;
  if (at < text.size() && text[at] == ',') {
    ++at;
    digits();
  }
  return at < text.size() && text[at] == '}' ? at + 1 : 0;
}

// The length of an escape, with the braces that belong to it or all up to "\E".
std::size_t escapeLength(std::string_view text) {
  if (text.size() < 2) return text.size();
  if (text[1] == 'Q') {
    const std::size_t end = text.find("\\E", 2);
    return end == text.npos ? text.size() : end + 2;
  }
  if (text[1] == 'c') return std::min<std::size_t>(text.size(), 3);
  if (text.size() > 2 && text[2] == '{' && isOneOf(text[1], "xopPgkNu")) {
    const std::size_t end = text.find('}', 3);
    if (end != text.npos) return end + 1;
  }
  return isOneOf(text[1], "pP") ? std::min<std::size_t>(text.size(), 3) : 2;
}

// An escape without a meaning is its letter.
bool meansItsLetter(std::string_view escape) { return escape.size() > 1 && isOneOf(escape[1], "ijmqyFIJMOTY"); }

// Is the piece, or does it end with what stands before it, a set of characters?
bool endsWithSet(std::string_view piece, std::string_view before) {
  if (piece.size() > 1 && piece[0] == '\\') return isOneOf(piece[1], "dDsSwWhHvVpP");
  return piece == "]" && before.ends_with(':');
}

// "(*UTF8)" among the verbs at the start is "(*UTF)" now.
std::string withVerbsOfToday(std::string_view expression) {
  constexpr std::string_view kOld = "(*UTF8)", kNew = "(*UTF)";
  std::string out;
  while (expression.starts_with("(*")) {
    const std::size_t end = expression.find(')');
    if (end == expression.npos) break;
    const std::string_view verb = expression.substr(0, end + 1);
    out += verb == kOld ? kNew : verb;
    expression.remove_prefix(verb.size());
  }
  return out.append(expression);
}

}  // namespace

// What is put before braces and hyphens changes nothing outside of classes, so that these needn't be told apart.
std::string inLastingSyntax(std::string_view expression) {
  const std::string written = withVerbsOfToday(expression);
  std::string out;
  bool behindSet = false;
  for (std::string_view rest = written; !rest.empty();) {
    std::size_t length = 1;
    std::string_view before;
    if (rest[0] == '\\') {
      length = escapeLength(rest);
      if (meansItsLetter(rest)) rest.remove_prefix(std::exchange(length, 1) - 1);
    } else if (rest[0] == '{') {
      length = std::max<std::size_t>(quantifierLength(rest), 1);
      if (length == 1) before = "\\";
    } else if (rest[0] == '-' && behindSet) {
      before = "\\";
    }
    const std::string_view piece = rest.substr(0, length);
    behindSet = endsWithSet(piece, out);
    out.append(before).append(piece);
    rest.remove_prefix(length);
  }
  return out;
}

}  // namespace language
