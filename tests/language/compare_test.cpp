#include "language/compare.h"
#include "language/expressions.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <ctime>
#include <random>

#include "language/comparison_watch.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace {

using language::patternReplace;
using language::wildcardCompare;

struct Case {
  const wchar_t *pattern, *text;
  int expected;
};

TEST(Compare, PatternsAndTexts) {
  const Case cases[] = {// plain
                        {L"ABC", L"abc", 1},
                        {L"Ä", L"ä", 1},
                        {L"ÖÜß", L"öüß", 1},
                        {L"ß", L"SS", 0},
                        {L"É", L"é", 0},
                        {L"", L"", 1},
                        {L"", L"a", 0},
                        {L"a", L"", 0},
                        {L"abc", L"abcd", 0},
                        {L"a.c", L"abc", 0},
                        {L"/abc", L"/ABC", 1},
                        {L"abc", L"abc\n", 0},
                        {L"a?", L"ab", 0},
                        {L"[", L"[", 1},
                        // wildcards
                        {L"a*c", L"ABBC", 1},
                        {L"a*c", L"ac", 1},
                        {L"a*c", L"xabc", 0},
                        {L"a*c", L"abcx", 0},
                        {L"*", L"", 1},
                        {L"*", L"anything", 1},
                        {L"a*", L"", 0},
                        {L"*Ü*", L"grün", 1},
                        {L"*é", L"É", 0},
                        {L"a.b*", L"axbc", 0},
                        {L"a.b*", L"A.Bc", 1},
                        {L"*a*b*c", L"xaxbxbxc", 1},
                        {L"*a*b*c", L"xbxaxc", 0},
                        {L"*aab", L"aaaab", 1},
                        {L"a**b", L"a*b", 1},
                        {L"a**b", L"axb", 0},
                        {L"a**b", L"ab", 0},
                        {L"a***", L"a*xyz", 1},
                        {L"a***", L"axyz", 0},
                        {L"****", L"**", 1},
                        {L"****", L"*", 0},
                        {L"(x)*[y]", L"(X)1[Y]", 1},
                        {L"a\\d*", L"a\\d5", 1},
                        {L"a\\d*", L"a55", 0},
                        {L"+?|{}^$# /*", L"+?|{}^$# /x", 1},
                        {L"*/", L"a/", 1},
                        {L"/a*", L"/abc", 1},
                        {L"a*c", L"ab\nc", 0},
                        {L"a\n*", L"a\nb", 1},
                        {L"a*", L"ab\n", 1},
                        {L"a*", L"ab\n\n", 0},
                        {L"a*b", L"axb\n", 1},
                        // expressions
                        {L"/b/", L"abc", 1},
                        {L"/^b/", L"abc", 0},
                        {L"/B/", L"abc", 0},
                        {L"/(?i)B/", L"abc", 1},
                        {L"/Ä/", L"ä", 0},
                        {L"/(?i)Ä/", L"ä", 1},
                        {L"/(?i)ä/", L"Ä", 1},
                        {L"/a*b/", L"xb", 1},
                        {L"/[/", L"anything", -1},
                        {L"/", L"/", -1},
                        {L"//", L"", -1},
                        {L"/x?/", L"", 1},
                        {L"/a b/", L"a b", 1},
                        {L"/^.$/", L"ä", 0},
                        {L"/^..$/", L"ä", 1},
                        {L"/a(?=b)/", L"ab", 1},
                        {L"/a/b/", L"a/b", 1},
                        {L"/^(a)\\1$/", L"aa", 1},
                        {L"/(?i)(?-i)A/", L"a", 0},
                        // numbers
                        {language::kIntegerPattern.data(), L"-12", 1},
                        {language::kIntegerPattern.data(), L"1.2", 0},
                        {language::kIntegerPattern.data(), L"", 0},
                        {language::kDoublePattern.data(), L"-1.5e-3", 1},
                        {language::kDoublePattern.data(), L"12,5", 1},
                        {language::kDoublePattern.data(), L"1.2.3", 0},
                        {L"/^[;\\s]*$/", L"; ;\t;", 1}};
  for (const auto& [pattern, text, expected] : cases) {
    EXPECT_EQ(expected, wildcardCompare(pattern, text)) << pattern << " against " << text;
    EXPECT_EQ(expected, language::narrowCompare(text::toUtf8(pattern), text::toUtf8(text)))
        << pattern << " against " << text;
  }
}

// A wildcard pattern as PCRE2 would get it: these replacements, one after the other.
int compareByExpression(std::string pattern, std::string text) {
  const std::pair<const char*, const char*> rows[] = {
      {"\\", "\\\\"}, {".", "\\."}, {"*", ".*"},  {".*.*", "\\*"}, {"+", "\\+"}, {"?", "\\?"},
      {"|", "\\|"},   {"{", "\\{"}, {"}", "\\}"}, {"[", "\\["},    {"]", "\\]"}, {"(", "\\("},
      {")", "\\)"},   {"^", "\\^"}, {"$", "\\$"}, {"#", "\\#"},    {" ", "\\ "}, {"/", "\\/"}};
  for (const auto& [from, to] : rows) pattern = text::replaceAll(pattern, from, to);
  language::foldUmlauts(pattern);
  language::foldUmlauts(text);
  return language::regexMatch("^(?i)" + pattern + "$", text);
}

struct Words {
  std::mt19937 random{4711};
  std::wstring operator()(std::wstring_view letters, std::size_t most) {
    std::wstring word;
    for (std::size_t i = random() % (most + 1); i > 0; --i) word += letters[random() % letters.size()];
    return word;
  }
};

TEST(Compare, WildcardsMatchAsTheirExpressionsDo) {
  Words word;
  int matches = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::wstring pattern = word(L"aAäÄ.\n\\", 2) + L"*" + word(L"ab*A*Ä\n", 5), text = word(L"aabBäÄ*.\n\\", 7);
    const int expected = compareByExpression(text::toUtf8(pattern), text::toUtf8(text));
    matches += expected;
    ASSERT_EQ(expected, wildcardCompare(pattern, text)) << pattern << " against " << text;
    ASSERT_EQ(expected, language::narrowCompare(text::toUtf8(pattern), text::toUtf8(text)))
        << pattern << " against " << text;
  }
  EXPECT_GT(matches, 1000);
}

TEST(Compare, ManyPatternsKeepTheirResults) {
  for (int round = 0; round < 2; ++round)
    for (int i = 0; i < 1500; ++i) {
      const std::wstring number = std::to_wstring(i);
      ASSERT_EQ(1, wildcardCompare(L"/^" + number + L"$/", number));
      ASSERT_EQ(0, wildcardCompare(L"/^" + number + L"$/", number + L"x"));
      ASSERT_EQ(-1, wildcardCompare(L"/(" + number + L"/", number));
    }
}

// The library has changed, or left to its builder, what it reads in these; lists count on one reading.
TEST(Compare, ExpressionsAreReadAlikeByAllReleases) {
  const Case cases[] = {
      // a brace that opens no quantifier is one
      {L"/^a{,3}$/", L"a{,3}", 1},
      {L"/^a{,3}$/", L"aa", 0},
      {L"/^a{ 1 }$/", L"a{ 1 }", 1},
      {L"/^a{1, 2}$/", L"aa", 0},
      {L"/^{x}{2}$/", L"{x}}", 1},
      {L"/^a{2}b{1,}c{1,2}$/", L"aabc", 1},
      {L"/^[{}]\\{$/", L"}{", 1},
      {L"/^\\x{41}\\Q{,3}\\E$/", L"A{,3}", 1},
      // a hyphen behind a set of characters is one
      {L"/^[\\w-.]+$/", L"a-b.c", 1},
      {L"/^[\\d-z]+$/", L"1-z", 1},
      {L"/^[\\d-z]+$/", L"1y", 0},
      {L"/^[[:digit:]-.]+$/", L"1-.", 1},
      {L"/^\\d-\\d$/", L"1-2", 1},
      {L"/^[a-c]$/", L"b", 1},
      {L"/[a-\\d]/", L"a", -1},
      // an escape without a meaning is its letter
      {L"/^\\j\\y\\_\\F$/", L"jy_F", 1},
      {L"/\\u0041/", L"A", -1},
      {L"/a\\/", L"a", -1},
      // umlauts are two characters, unless the expression asks for letters
      {L"/^[ä]$/", L"ä", 0},
      {L"/(*UTF8)^[äé].$/", L"éß", 1},
      {L"/(*UTF)(*UCP)^\\w$/", L"ñ", 1},
      // lines end with a line feed
      {L"/^a.b$/", L"a\rb", 1},
      {L"/^a.b$/", L"a\nb", 0},
      {L"/^a\\Rb$/",
       L"a\x2028"
       L"b",
       0},
      {L"/^a\\Rb$/",
       L"a\x0B"
       L"b",
       1},
      // what a group called by its number has taken can be given back
      {L"/^(a+)(?1)b$/", L"aab", 1},
      {L"/^(.|(.)(?1)\\2)$/", L"abcba", 1},
      {L"/(?=a\\K)ab/", L"ab", 1},
      {L"/^(?<name>a)\\k<name>(?P=name)$/", L"aaa", 1},
      {L"/^(?|(a)|(b))\\1$/", L"bb", 1},
      {L"/(a|\\1?)b/", L"b", 1},
      {L"/^a++a/", L"aaa", 0},
      {L"/[[:<:]]b/", L"a b", 1},
  };
  for (const auto& [pattern, text, expected] : cases)
    EXPECT_EQ(expected, wildcardCompare(pattern, text)) << pattern << " against " << text;
}

std::wstring repeated(std::wstring_view piece, int times) {
  std::wstring all;
  for (int i = 0; i < times; ++i) all += piece;
  return all;
}

TEST(Compare, AMatchHasRoomForEightyGroups) {
  const std::wstring groups = L"/^" + repeated(L"(a)", 80);
  const std::wstring as(81, L'a');
  EXPECT_EQ(1, wildcardCompare(groups + L"a$/", as));
  EXPECT_EQ(0, wildcardCompare(groups + L"(a)$/", as)) << "the last one's place isn't kept";
}

TEST(Compare, LongTextsAndEndlessBacktrackingComeToAnEnd) {
  test::World world;  // whose log takes what is given up
  ASSERT_EQ(0, world.start());
  const std::wstring as(100'000, L'a');
  EXPECT_EQ(1, wildcardCompare(L"/^(a|b)*$/", as));
  EXPECT_EQ(1, wildcardCompare(L"/^(?:a|b)*$/", as.substr(0, 3500)));
  EXPECT_EQ(-2, wildcardCompare(L"/^(?:a|b)*$/", as + L"c"))
      << "given up, which is told: it isn't known to be no match";
  EXPECT_EQ(1, wildcardCompare(L"/b$/", as + L"b"));
  EXPECT_EQ(0, wildcardCompare(L"*a*a*a*a*a*a*b", as));
  EXPECT_EQ(1, wildcardCompare(L"*a*a*a*a*a*a*b", as + L"b"));
  EXPECT_EQ(1, wildcardCompare(as, as));
  EXPECT_EQ(-1, wildcardCompare(L"/" + std::wstring(as.size(), L'(') + L"/", as));
}

// What the steps back of machine code would hide, and what would fill the memory, is given up too.
TEST(Compare, WhatBacktracksWithoutEndIsGivenUpAndToldOnceARun) {
  test::World world;
  ASSERT_EQ(0, world.start());
  const std::wstring as(100'000, L'a');
  const std::wstring patterns[] = {L"/^(a+)+[^a]/", L"/(?:.?){30}(?:.?){30}\\d/", L"/^(.*)(?1)(?1)(?1)\\d/",
                                   L"/^(a?(?1)?)*[^a]/", L"/^" + repeated(L"(|a)", 40) + L"[^a]/"};
  for (const std::wstring& pattern : patterns) {
    const language::GivenUp givenUp;
    EXPECT_EQ(-2, wildcardCompare(pattern, as)) << pattern;
    EXPECT_TRUE(givenUp.any());
    EXPECT_EQ(-2, language::narrowCompare(text::toUtf8(pattern), text::toUtf8(as.substr(0, 5000)))) << pattern;
  }
  const language::GivenUp givenUp;
  EXPECT_EQ(-2, wildcardCompare(patterns[0], as + L"a"));
  EXPECT_EQ(as, patternReplace(as, patterns[0], L"R"));
  EXPECT_EQ(0, wildcardCompare(L"/b/", L"a"));
  const std::wstring line =
      L"The pattern '/^(a+)+[^a]/' was given up on the text '" + as.substr(0, 60) + L"...': it takes too many steps";
  const auto first = world.log().find(line);
  ASSERT_NE(std::wstring::npos, first) << world.log();
  EXPECT_EQ(std::wstring::npos, world.log().find(line, first + 1));
  language::forgetWhatWasGivenUp();
  (void)wildcardCompare(patterns[0], as);
  EXPECT_NE(std::wstring::npos, world.log().find(line, first + 1));
  const language::GivenUp none;
  EXPECT_EQ(1, wildcardCompare(L"/a/", L"a"));
  EXPECT_FALSE(none.any());
}

// The host may match in a thread whose stack is small.
TEST(Compare, AStackOfOneMegabyteIsEnough) {
  const auto matches = [](void*) -> void* {
    const std::wstring xs = std::wstring(2000, L'x') + L"y";
    (void)wildcardCompare(L"/x*y*z*((a)|b)*?z/", xs);
    (void)wildcardCompare(L"/(*NO_JIT)^(?:(x)|y)*z/", xs);
    const std::wstring nested = repeated(L"(?:", 250) + L"x*" + repeated(L")", 250);
    EXPECT_EQ(1, wildcardCompare(L"/" + nested + L"/", xs));
    EXPECT_EQ(1, wildcardCompare(L"/(*NO_JIT)" + nested + L"*/", xs));
    EXPECT_EQ(-1, wildcardCompare(L"/(" + nested + L")/", xs));
    return nullptr;
  };
  pthread_attr_t attributes;
  ASSERT_EQ(0, pthread_attr_init(&attributes));
  ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, 1024 * 1024));
  pthread_t thread;
  ASSERT_EQ(0, pthread_create(&thread, &attributes, matches, nullptr));
  EXPECT_EQ(0, pthread_join(thread, nullptr));
  pthread_attr_destroy(&attributes);
}

TEST(PatternReplace, PatternsAndTexts) {
  const struct {
    const wchar_t *text, *pattern, *expected;
  } cases[] = {
      {L"baab", L"a*", L"bR"},
      {L"", L"*", L""},
      {L"abc", L"", L"abc"},
      {L"abcABC", L"b", L"aRcARC"},
      {L"aaa", L"aa", L"Ra"},
      {L"grün DÜNN", L"ü", L"grRn DRNN"},
      {L"a*b axb", L"a**b", L"R axb"},
      {L"x(1)y(2)z", L"(*)", L"xRz"},
      {L"ab\nab", L"a*", L"RR"},   // a run ends at a line feed, which the match takes along
      {L"abc", L"/b/", L"R"},      // not anchored: the whole text is the longest piece that holds a "b"
      {L"abcbd", L"/b$/", L"Rd"},  // up to the last "b"
      {L"abcbd", L"/^b/", L"aR"},  // from the first "b" on
      {L"12ab34", L"/^\\d+$/", L"RabR"},
      {L"Axe", L"/(?i)^a$/", L"Rxe"},
      {L"Äx", L"/(?i)^ä$/", L"Rx"},
      {L"Äx", L"/^ä$/", L"Äx"},
      {L"abc", L"/[/", L"abc"},
      {L"a/b", L"/", L"a/b"},
  };
  for (const auto& [text, pattern, expected] : cases)
    EXPECT_EQ(expected, patternReplace(text, pattern, L"R")) << pattern << " in " << text;
  EXPECT_EQ(L"aaaa", patternReplace(L"aa", L"a", L"aa"));  // replacements aren't searched
}

// At each place the longest piece that compares equal, tried one by one.
std::wstring replacedByDefinition(std::wstring_view text, std::wstring_view pattern, std::wstring_view replacement) {
  std::wstring out;
  while (!text.empty()) {
    std::size_t length = text.size();
    while (length > 0 && wildcardCompare(pattern, text.substr(0, length)) != 1) --length;
    out += length > 0 ? replacement : text.substr(0, 1);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

TEST(PatternReplace, ShortCutsGiveWhatTheDefinitionGives) {
  const std::wstring expressions[] = {L"/b/",
                                      L"/^b/",
                                      L"/b$/",
                                      L"/^a+$/",
                                      L"/a+$/",
                                      L"/^(a|b)*b$/",
                                      L"/\\bab/",
                                      L"/ab\\b/",
                                      L"/a(?!b)/",
                                      L"/(?<=a)b/",
                                      L"/^[^]a$^]+$/",
                                      L"/a++b/",
                                      L"/(?>a+)$/",
                                      L"/^$/",
                                      L"/$/",
                                      L"/^(?!$)\nb/",
                                      L"/^\n$/",
                                      L"/\\Aa*\\Z/",
                                      L"/a\\z/",
                                      L"/\\Qa$\\E/",
                                      L"/a\\$/",
                                      L"/(?i)^Ä+$/",
                                      L"/(?m)^a$/",
                                      L"/a.b/",
                                      L"/^ä..$/",
                                      L"/(?:a|b$)a/",
                                      L"/^a{2}$/",
                                      L"/^[[:alpha:]]+$/",
                                      L"/[\\d$^]/",
                                      L"/^(a)(?(1)b|$)/",
                                      L"/(*ANYCRLF)a$/",
                                      L"/\\Gab?$/",
                                      L"/a|^$/",
                                      L"/b?/"};
  Words word;
  for (int i = 0; i < 6000; ++i) {
    const bool wild = i % 2 == 0;
    const std::wstring pattern =
        wild ? word(L"abA*\n", 3) + L"*" + word(L"abB*\n", 4) : expressions[word.random() % std::size(expressions)];
    const std::wstring text = word(L"aaabbB*$\nä", 14);
    ASSERT_EQ(replacedByDefinition(text, pattern, L"<>"), patternReplace(text, pattern, L"<>"))
        << pattern << " in " << text;
  }
}

TEST(PatternReplace, LongTextsComeToAnEnd) {
  test::World world;  // whose log takes what is given up
  ASSERT_EQ(0, world.start());
  const std::wstring as(70'000, L'a');
  EXPECT_EQ(std::wstring(35'000, L'R'), patternReplace(as, L"aa", L"R"));
  EXPECT_EQ(as, patternReplace(as, L"a*a*a*b", L"R"));
  EXPECT_EQ(L"Rb", patternReplace(as + L"b", L"/^a+$/", L"R"));
  EXPECT_EQ(as, patternReplace(as, L"/b$/", L"R"));
  EXPECT_EQ(as, patternReplace(as, L"/^(a+)+b$/", L"R"));
}

// What each try may cost is little beside what all of them cost, from each place and to each end.
TEST(PatternReplace, AllTriesTogetherComeToAnEnd) {
  test::World world;
  ASSERT_EQ(0, world.start());
  const std::wstring runs = repeated(std::wstring(20, L'a') + L".", 40);
  const std::clock_t before = std::clock();
  for (const wchar_t* pattern : {L"/^(a+)+$\"/", L"/\\b(a+)+[^a.]/", L"/^(?:a|aa)+[bc]$/", L"/(a|a)+?[bc]\\b/"}) {
    const language::GivenUp givenUp;
    EXPECT_EQ(runs + L"\"", patternReplace(runs + L"\"", pattern, L"R")) << pattern;
    EXPECT_TRUE(givenUp.any()) << pattern;
  }
  constexpr std::clock_t kSeconds = 10;  // of the processor; from place to place it would be minutes
  EXPECT_LT(std::clock() - before, kSeconds * CLOCKS_PER_SEC);
}

TEST(Compare, SecondWords) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"one two three", L"two"}, {L"one two", L"two"}, {L"one", L""}, {L"", L""},
      {L" two", L"two"},          {L"one  two", L""}};
  for (const auto& [text, word] : cases) EXPECT_EQ(word, language::secondWord(text)) << text;
}

}  // namespace
