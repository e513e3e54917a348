#include "text/format.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "text/encoding.h"

namespace text {
namespace {

TEST(Format, ExpandsEachKind) {
  const std::wstring name = L"BRACKET";
  EXPECT_EQ(L"2(ERR) H3 - G0 BRACKET - 100%", format(L"%d(ERR) %c%d %s%s - %i%%", 2, L'H', 3, L"- G0 ", name, 100));
  EXPECT_EQ(L"kvd_log - 9876543210_1.txt", format(L"kvd_log - %lld_%i.txt", 9876543210LL, 1));
  EXPECT_EQ(L"Status: 04FF : 4294967295", format(L"Status: %04X : %u", 0x4FF, -1));
  EXPECT_EQ(L"0.250000|true|",
            format(L"%f|%s|%s", 0.25, true ? L"true" : L"false", static_cast<const wchar_t*>(nullptr)));
  EXPECT_EQ(L"-9223372036854775808", format(L"%lld", std::numeric_limits<long long>::min()));
}

TEST(Format, WidthAndPrecisionOfTextsCountUnitsAndSplitNothing) {
  const std::wstring smile = L"a\U0001F600b";
  EXPECT_EQ(L"[  " + smile + L"]", format(L"[%6s]", smile));
  EXPECT_EQ(L"[" + smile + L"  ]", format(L"[%-6s]", smile));
  EXPECT_EQ(L"[a]", format(L"[%.2s]", smile));
  EXPECT_EQ(L"[a\U0001F600]", format(L"[%.3s]", smile));
  EXPECT_EQ(L"[ \U0001F600]", format(L"[%3c]", 0x1F600));
  EXPECT_EQ(L"[]", format(L"[%.0s]", L"gone"));
}

// What a list may hold where a pattern is expected: nothing is read that wasn't given, nothing grows without bound.
TEST(Format, HostilePatternsStayAsTheyStand) {
  const std::wstring_view cases[] = {
      L"%s",
      L"%d %f",
      L"%",
      L"100%",
      L"%n",
      L"%hhn",
      L"%*d",
      L"%1$s",
      L"%ls",
      L"%ld",
      L"%hs",
      L"%llx",
      L"%99999d",
      L"%.513f",
      L"%4097s",
      L"%p",
      L"%a",
      L"%S",
      L"%-",
      L"%5",
      L"%.",
      L"%ll",
      L"%#",
      L"%5%",
      L"%L",
      L"% ",
      L"%.99999999999s",
      L"%99999999999999999999d",
  };
  for (const std::wstring_view pattern : cases) EXPECT_EQ(pattern, format(pattern)) << toUtf8(pattern);
  EXPECT_EQ(L"%n 7", format(L"%n %d", 7));
  EXPECT_EQ(L"%99999d 8", format(L"%99999d %d", 7, 8));
  EXPECT_EQ(4096U, format(L"%4096d", 1).size());
  EXPECT_EQ(309U + 1 + 512, format(L"%.512f", std::numeric_limits<double>::max()).size());
}

TEST(Format, AnotherKindStaysAndTakesItsArgument) {
  EXPECT_EQ(L"%s next", format(L"%s %s", 1, L"next"));
  EXPECT_EQ(L"%d %f %c", format(L"%d %f %c", 1.5, 2, L"text"));
  EXPECT_EQ(L"%d %x %g", format(L"%d %x %g", L"1", L'a', L"2"));
  EXPECT_EQ(L"%c %c", format(L"%c %c", 0xD800, -1));
  EXPECT_EQ(L"1", format(L"%d", 1, L"surplus", 2.0));
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
std::wstring printed(const std::string& pattern, auto value) {
  std::array<char, 2048> buffer{};
  std::snprintf(buffer.data(), buffer.size(), pattern.c_str(), value);
  return fromUtf8(buffer.data());
}
#pragma GCC diagnostic pop

std::string randomForm(std::mt19937& random) {
  const auto below = [&random](unsigned most) { return random() % most; };
  std::string form = "%";
  for (const char flag : {'-', '+', ' ', '0', '#'}) {
    if (below(4) == 0) form += flag;
  }
  if (below(2) == 0) form += std::to_string(1 + below(30));
  if (below(2) == 0) form += "." + std::to_string(below(20));
  return form;
}

// The C library is the judge, over all flags with widths and precisions.
TEST(Format, NumbersAreWrittenAsByC) {
  std::mt19937 random(4711);
  std::vector<double> doubles = {0.0, -0.0, 0.5, 1.5, 9.9999995, 99999.95, 999999.5, 1e-5, 0.0001, 1e15, 1e300, 5e-324};
  doubles.insert(doubles.end(), {HUGE_VAL, -HUGE_VAL, std::nan("")});
  std::vector<int> integers = {0, 1, -1, 255, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
  for (int i = 0; i < 200; ++i) {
    doubles.push_back(std::ldexp(static_cast<double>(random()) - 2e9, static_cast<int>(random() % 120) - 60));
    integers.push_back(static_cast<int>(random()));
  }
  for (int round = 0; round < 20; ++round) {
    for (const char conversion : {'f', 'e', 'g', 'd', 'u', 'x', 'X'}) {
      const std::string form = randomForm(random) + conversion;
      // This C library drops the zeros of a %#g that was rounded up to a power of ten; the next test has %#g.
      if (conversion == 'g' && form.find('#') != form.npos) continue;
      if (std::string_view("feg").find(conversion) != std::string_view::npos) {
        for (const double v : doubles) ASSERT_EQ(printed(form, v), format(fromUtf8(form), v)) << form << " of " << v;
      } else {
        for (const int v : integers) ASSERT_EQ(printed(form, v), format(fromUtf8(form), v)) << form << " of " << v;
      }
    }
  }
}

TEST(Format, AlternativeGeneralKeepsItsZeros) {
  EXPECT_EQ(L"1.00000e+06 0.500000 123456. 1.00000e-05", format(L"%#g %#g %#g %#g", 999999.5, 0.5, 123456.4, 1e-5));
  EXPECT_EQ(L"0.00000 2. 1.e+01 -1.50", format(L"%#g %#.0g %#.1g %#.3g", 0.0, 2.0, 9.9, -1.5));
}

}  // namespace
}  // namespace text
