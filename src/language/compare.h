// The one comparison for texts that a user wrote. A pattern says by its form how it is matched:
//   "/x/"        a PCRE2 expression, unanchored; "(?i)" in it makes umlauts case-blind too
//   with a "*"   anchored, case-blind, "*" for any run, "**" for one literal star
//   else         equality without regard to case
#pragma once

#include <string>
#include <string_view>

namespace language {

// 1 match, 0 none, -1 an expression that doesn't compile or holds nothing, -2 a match that was given up. Compiled
// patterns are kept in a bounded cache; the results are those of compiling anew. Matching is bounded: what backtracks
// without end is given up, with an error line; see comparison_watch.h.
int wildcardCompare(std::wstring_view pattern, std::wstring_view text);
// A match; callers that must tell "no match" from an expression that is none ask wildcardCompare.
inline bool matches(std::wstring_view pattern, std::wstring_view text) { return wildcardCompare(pattern, text) == 1; }
// The same on UTF-8, as a number.
int narrowCompare(std::string_view pattern, std::string_view text);
// PCRE2 on UTF-8 bytes, no options, from position 0. 1, 0, -1 where it doesn't compile, -2 where it is given up, which
// has no line here.
int regexMatch(std::string_view expression, std::string_view text);

// text with each match of the pattern replaced: at each position, left to right, the longest piece of text that
// wildcardCompare accepts. Replacements aren't searched again. Where the search is given up the text comes back as it
// is.
std::wstring patternReplace(std::wstring_view text, std::wstring_view pattern, std::wstring_view replacement);

// The second blank-separated word: what stands between the first blank and the next one (or the end).
std::wstring secondWord(std::wstring_view text);

// Texts by which callers know numbers before they read them.
constexpr std::wstring_view kIntegerPattern = L"/^-{0,1}\\d+$/";
constexpr std::wstring_view kDoublePattern = L"/^-{0,1}\\d+[\\d,e,-]*\\.{0,1}[\\d,e,-]*$/";

}  // namespace language
