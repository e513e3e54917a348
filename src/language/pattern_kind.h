// How a user's pattern is to be matched, told from its form alone.
#pragma once

#include <string_view>

namespace language {

enum class PatternKind { plain, wildcard, expression };

// Slashes come first: "/a*b/" is an expression, and so is a lone "/".
template <class Char>
PatternKind kindOf(std::basic_string_view<Char> pattern) {
  if (pattern.empty()) return PatternKind::plain;
  if (pattern.front() == Char{'/'} && pattern.back() == Char{'/'}) return PatternKind::expression;
  return pattern.find(Char{'*'}) == pattern.npos ? PatternKind::plain : PatternKind::wildcard;
}

}  // namespace language
