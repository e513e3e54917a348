// Sizes, encodings, letters, numbers and pieces of wide texts.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "text/ascii_scan.h"
#include "text/capitals.h"
#include "text/code_points.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"
#include "text/units.h"

namespace text {
namespace {

TEST(Units, CuttingCountsUnitsAndNeverSplitsACharacter) {
  const std::wstring smile = L"\U0001F600";
  const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
  for (const std::wstring& wide : {smile, pair}) {
    const std::wstring text = L"a" + wide + L"b";
    EXPECT_EQ(4U, units(text));
    const std::wstring starts[] = {L"", L"a", L"a", L"a" + wide, text, text};
    for (std::size_t most = 0; most < std::size(starts); ++most) EXPECT_EQ(starts[most], cut(text, most)) << most;
    EXPECT_EQ(wide, slice(text, 1, 3));
    EXPECT_EQ(L"b", slice(text, 2, 99));
    EXPECT_EQ(L"", slice(text, 1, 2));
    EXPECT_EQ(L"", slice(text, 2, 3));
    EXPECT_EQ(L"", slice(text, 3, 1));
    EXPECT_EQ(L"", slice(text, 4, 9));
  }
  EXPECT_TRUE(fits(std::wstring(kTextSize - 1, L'x'), kTextSize));
  EXPECT_FALSE(fits(std::wstring(kTextSize - 2, L'x') + smile, kTextSize));
}

TEST(Encoding, Utf8GoesThereAndBackAndDamageIsMarked) {
  const std::wstring text = L"a\u00E4\u20AC\uFEFF\U0001F600\U0010FFFF";
  EXPECT_EQ("a\xC3\xA4\xE2\x82\xAC\xEF\xBB\xBF\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF", toUtf8(text));
  EXPECT_EQ(text, fromUtf8(toUtf8(text)));
  struct {
    std::string_view bytes;
    std::wstring_view text;
  } const damaged[] = {
      {"a\x80z", L"a\uFFFDz"},                            // continuation without a start
      {"\xC3", L"\uFFFD"},                                // cut off
      {"\xE2\x82", L"\uFFFD\uFFFD"},                      //
      {"\xC0\xAF", L"\uFFFD\uFFFD"},                      // overlong "/"
      {"\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},            //
      {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
      {"\xC3(\xFF", L"\uFFFD(\uFFFD"},
  };
  for (const auto& [bytes, expected] : damaged) {
    EXPECT_EQ(expected, fromUtf8(bytes)) << bytes;
    EXPECT_FALSE(isUtf8(bytes)) << bytes;
  }
  constexpr auto kBeyond = static_cast<wchar_t>(sizeof(wchar_t) > 2 ? 0x110000 : 0xDBFF);  // no text of units has one
  const wchar_t unwritable[] = {static_cast<wchar_t>(0xD800), L'-', kBeyond, L'-', static_cast<wchar_t>(0xDC00)};
  EXPECT_EQ("\xEF\xBF\xBD-\xEF\xBF\xBD-\xEF\xBF\xBD", toUtf8({unwritable, 5}));
}

TEST(Encoding, SingleBytes) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(all, toLatin1(fromLatin1(all)));
  EXPECT_EQ("\xFC?", toLatin1(L"\u00FC\u0100"));
  EXPECT_EQ(L"\u20AC\u201E\uFFFD\u0178\u00E4", fromWindows1252("\x80\x84\x81\x9F\xE4"));
  EXPECT_EQ("\x80\x9F\xE4??", toWindows1252(L"\u20AC\u0178\u00E4\U0001F600\uFFFD"));
}

TEST(Encoding, ATextFileTellsItsEncoding) {
  EXPECT_EQ(L"\u00E4", fromTextFile("\xEF\xBB\xBF\xC3\xA4"));
  EXPECT_EQ(L"\uFFFD", fromTextFile("\xEF\xBB\xBF\xE4"));
  EXPECT_EQ(L"\u00E4", fromTextFile("\xC3\xA4"));
  EXPECT_EQ(L"\u00E4\u20AC", fromTextFile("\xE4\x80"));
  const std::wstring wide = L"a\u20AC\U0001F600\uFFFDb\uFFFD";
  EXPECT_EQ(wide, fromTextFile({"\xFF\xFE"
                                "a\0\xAC\x20\x3D\xD8\x00\xDE\x3D\xD8"
                                "b\0\x00\xDE!",
                                17}));
  EXPECT_EQ(wide, fromTextFile({"\xFE\xFF"
                                "\0a\x20\xAC\xD8\x3D\xDE\x00\xD8\x3D"
                                "\0b\xDE\x00",
                                16}));
}

TEST(Letters, CaseIsAsciiAndThreeUmlauts) {
  EXPECT_EQ(L"az\u00E4\u00F6\u00FC\u00DF\u00C9[@", lower(L"AZ\u00C4\u00D6\u00DC\u00DF\u00C9[@"));
  EXPECT_EQ(L"AZ\u00C4\u00D6\u00DC\u00DF\u00E9{`", upper(L"az\u00E4\u00F6\u00FC\u00DF\u00E9{`"));
  EXPECT_EQ("a\xC3\x84[", lower("A\xC3\x84["));
  EXPECT_TRUE(equalNoCase(L"\u00DCber", L"\u00FCBER"));
  EXPECT_FALSE(equalNoCase(L"\u00C9", L"\u00E9"));
  EXPECT_FALSE(equalNoCase(L"ab", L"abc"));
  EXPECT_TRUE(startsWithNoCase(L"KVD_LOG", L"kvd_") && endsWithNoCase(L"A.KVZ", L".kvz"));
  EXPECT_FALSE(startsWithNoCase(L"kv", L"kvd") || endsWithNoCase(L"z", L".kvz"));
  EXPECT_EQ(HashNoCase{}(L"\u00DCber"), HashNoCase{}(L"\u00FCBER"));
}

TEST(Letters, AreWrittenInCapitalsInEuropesAlphabets) {
  struct Row {
    const wchar_t *small, *capital;
  };
  const Row rows[] = {
      {L"az0-_", L"AZ0-_"},
      {L"\u00E9\u00F1\u00E5\u00F8\u00FE\u00FF", L"\u00C9\u00D1\u00C5\u00D8\u00DE\u0178"},  // French, Spanish, Nordic
      {L"\u0105\u0107\u0142\u015B\u017C", L"\u0104\u0106\u0141\u015A\u017B"},              // Polish
      {L"\u010D\u011B\u013E\u0159\u0161\u016F\u0151", L"\u010C\u011A\u013D\u0158\u0160\u016E\u0150"},
      {L"\u011F\u015F\u0219\u021B\u01A1\u1EA1", L"\u011E\u015E\u0218\u021A\u01A0\u1EA0"},
      {L"\u03AC\u03AD\u03CC\u03CE\u03B1\u03C9", L"\u0386\u0388\u038C\u038F\u0391\u03A9"},
      {L"\u0430\u044F\u0451\u0456\u0491", L"\u0410\u042F\u0401\u0406\u0490"},
      // No case, or none that stays one character: signs, sharp s, the millionth
      {L"\u00D7\u00F7\u00DF\u00B5\u20AC\u4E2D", L"\u00D7\u00F7\u00DF\u00B5\u20AC\u4E2D"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.capital, inCapitals(row.small)) << toUtf8(row.small);
    EXPECT_EQ(row.capital, inCapitals(row.capital)) << toUtf8(row.small);
    EXPECT_EQ(row.small, inSmallLetters(row.capital)) << toUtf8(row.small);
    EXPECT_EQ(row.small, inSmallLetters(row.small)) << toUtf8(row.small);
  }
  EXPECT_EQ(L"I\u03A3", inCapitals(L"\u0131\u03C2"));
  EXPECT_EQ(L"i\u00DF", inSmallLetters(L"\u0130\u1E9E"));
}

// As on a machine whose units have 16 bits.
TEST(CodePoints, APairIsOneCharacterInEveryWalk) {
  const std::u16string_view text =
      u"a\U0001F600\x01\xDE00\xD83D"
      u"b\U0001FFFE";  // a pair, a control character, halves, a pair that is none
  const auto isShown = [](char32_t c) { return isPrintable(c); };
  EXPECT_EQ(u"a\U0001F600b", keptCharacters(text, isShown));
  EXPECT_EQ(u"a\U0001F600???b?", keptCharacters(text, isShown, std::u16string_view(u"?")));
  EXPECT_TRUE(allCharacters(std::u16string_view(u"a\U0001F600"), isShown));
  EXPECT_FALSE(allCharacters(text, isShown));
  EXPECT_FALSE(allCharacters(std::u16string_view(u"\xD83D"), isShown));
  const CodePoint pair = codePointIn(text, 1);
  EXPECT_TRUE(pair.code == 0x1F600 && pair.length == 2 && pair.units == 2);
  EXPECT_EQ(std::size_t{1}, codePointIn(text, 2).length);
}

TEST(Letters, Printable) {
  for (const int c : {0x20, 0x7E, 0xA0, 0xE4, 0x20AC, 0xFFFD, 0x1F600})
    EXPECT_TRUE(isPrintable(static_cast<wchar_t>(c))) << c;
  for (const int c : {0, 0x09, 0x1F, 0x7F, 0x9F, 0xD800, 0xDFFF, 0xFDD0, 0xFFFE, 0x1FFFF, 0x110000, -1}) {
    EXPECT_FALSE(isPrintable(static_cast<wchar_t>(c))) << c;
  }
}

TEST(Numbers, Integers) {
  constexpr int kMin = std::numeric_limits<int>::min(), kMax = std::numeric_limits<int>::max();
  using enum NumberFault;
  struct {
    std::wstring_view text;
    int value;
    NumberFault fault;
  } const cases[] = {
      {L"12", 12, none},
      {L" \t\n-7x", -7, none},
      {L"+0012", 12, none},
      {L"", 0, notANumber},
      {L"x1", 0, notANumber},
      {L"-", 0, notANumber},
      {L"- 1", 0, notANumber},
      {L"--1", 0, notANumber},
      {L"1.9", 1, none},
      {L"2147483647", kMax, none},
      {L"2147483648", kMax, outOfRange},
      {L"-2147483648", kMin, none},
      {L"-2147483649", kMin, outOfRange},
      {L"99999999999999999999999", kMax, outOfRange},
      {L"\u0661", 0, notANumber},
  };
  for (const auto& [text, value, fault] : cases) {
    EXPECT_EQ(value, readInt(text).value) << toUtf8(text);
    EXPECT_EQ(fault, readInt(text).fault) << toUtf8(text);
    EXPECT_EQ(value, parseInt(toUtf8(text))) << toUtf8(text);
  }
}

TEST(Numbers, Doubles) {
  using enum NumberFault;
  struct {
    std::wstring_view text;
    double value;
    NumberFault fault;
  } const cases[] = {
      {L" +1.5mm", 1.5, none},
      {L"-.5", -0.5, none},
      {L"5.", 5, none},
      {L"1,5", 1, none},
      {L"1e3", 1000, none},
      {L"1e+", 1, none},
      {L"0x10", 16, none},
      {L"0x1p-1", 0.5, none},
      {L"0x", 0, none},
      {L"-INF", -HUGE_VAL, notFinite},
      {L"Information sheet", HUGE_VAL, notFinite},
      {L"", 0, notANumber},
      {L".", 0, notANumber},
      {L"+-1", 0, notANumber},
      {L"--1", 0, notANumber},
      {L"e5", 0, notANumber},
      {L"\u0661", 0, notANumber},
      {L"1e999", HUGE_VAL, outOfRange},
      {L"-1e999", -HUGE_VAL, outOfRange},
      {L"1e-999", 0, outOfRange},
      {L"0.0001e-330", 0, outOfRange},
      {L"0x1p99999", HUGE_VAL, outOfRange},
      {L"1e99999999999999999999", HUGE_VAL, outOfRange},
  };
  for (const auto& [text, value, fault] : cases) {
    EXPECT_EQ(value, readDouble(text).value) << toUtf8(text);
    EXPECT_EQ(fault, readDouble(text).fault) << toUtf8(text);
  }
  for (const wchar_t* text : {L"nan", L"Nanocoat", L"-NaN(1)"}) {
    EXPECT_TRUE(std::isnan(parseDouble(text))) << toUtf8(text);
    EXPECT_EQ(notFinite, readDouble(text).fault) << toUtf8(text);
  }
}

TEST(Numbers, WholeTextsAlone) {
  for (const auto& [text, value] : std::initializer_list<std::pair<std::wstring_view, double>>{
           {L"7", 7}, {L" -7\t", -7}, {L"7.0", 7}, {L"007", 7}, {L"1.5e1", 15}, {L"0x10", 16}, {L"-0", 0}}) {
    EXPECT_EQ(value, wholeDouble(text)) << toUtf8(text);
    EXPECT_EQ(text != L"1.5e1" && text != L"0x10", wholeInt(text).has_value()) << toUtf8(text);
    if (const auto integer = wholeInt(text)) EXPECT_EQ(value, *integer) << toUtf8(text);
  }
  for (const std::wstring_view text : {L"", L" ", L"2,5", L"50abc", L"3.5 mm", L"M8", L"1 2", L"7-", L"nan", L"inf",
                                       L"1e999", L"1e-999", L"0x", L"99999999999 mm"}) {
    EXPECT_FALSE(wholeDouble(text)) << toUtf8(text);
    EXPECT_FALSE(wholeInt(text)) << toUtf8(text);
  }
  EXPECT_FALSE(wholeInt(L"7.9"));
  EXPECT_FALSE(wholeInt(L"99999999999"));
}

TEST(Numbers, ExactFixedReadsBack) {
  for (const auto& [value, text] :
       std::initializer_list<std::pair<double, std::wstring_view>>{{2.5, L"2.500000"},
                                                                   {0, L"0.000000"},
                                                                   {-1e22, L"-10000000000000000000000.000000"},
                                                                   {7.85e-9, L"7.85e-09"},
                                                                   {7.85e-6, L"7.85e-06"},
                                                                   {1.234567891, L"1.234567891"}}) {
    EXPECT_EQ(text, exactFixed(value));
    EXPECT_EQ(value, parseDouble(exactFixed(value)));
  }
}

TEST(Numbers, ShortestReadsBack) {
  struct {
    double value;
    std::wstring_view text;
  } const cases[] = {
      {0, L"0"},
      {-0.0, L"-0"},
      {0.1, L"0.1"},
      {100000, L"100000"},
      {-2.5, L"-2.5"},
      {1e15, L"1e+15"},
      {1e-5, L"0.00001"},
      {1e-6, L"1e-06"},
      {1.0 / 3, L"0.3333333333333333"},
      {5e-324, L"5e-324"},
      {std::numeric_limits<double>::max(), L"1.7976931348623157e+308"},
  };
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(text, shortest(value));
    EXPECT_EQ(value, parseDouble(shortest(value)));
  }
}

// Every place of every length around the sizes that are looked at in one step.
TEST(AsciiScan, AMarkOrAWideCharacterIsFoundWhereverItStands) {
  for (std::size_t size = 0; size < 150; ++size) {
    std::wstring quiet(size, L'a');
    for (std::size_t i = 0; i < size; ++i) quiet[i] = L"\x7F!#&?A 'd5"[i % 10];
    EXPECT_TRUE(isAsciiWithoutMarks(quiet)) << size;
    for (std::size_t at = 0; at < size; ++at) {
      const wchar_t loud = L"$%@\x80\xA7\x124\x8025\U00010040"[(at + size) % 8];
      std::wstring other = quiet;
      other[at] = loud;
      ASSERT_FALSE(isAsciiWithoutMarks(other)) << size << " at " << at << " code " << static_cast<int>(loud);
    }
  }
}

TEST(Pieces, TakenApartAndPutTogether) {
  EXPECT_EQ(L"aXbX", replaceAll(L"a;;b;;", L";;", L"X"));
  EXPECT_EQ(L"aaaa", replaceAll(L"aa", L"a", L"aa"));
  EXPECT_EQ(L"ab", replaceAll(L"ab", L"", L"x"));
  using Texts = std::vector<std::wstring>;
  EXPECT_EQ((Texts{L"a", L"", L"b", L""}), split(L"a;;b;", L';'));
  EXPECT_EQ((Texts{L""}), split(L"", L';'));
  EXPECT_EQ((Texts{L"a", L"", L"b\rc", L"d\r"}), lines(L"a\r\n\nb\rc\nd\r"));
  EXPECT_EQ((Texts{L"a"}), lines(L"a\n"));
  EXPECT_EQ(Texts{}, lines(L""));
  EXPECT_EQ(L"a, b", join({L"a", L"b"}, L", "));
  EXPECT_EQ(L"a b", trimmed(L" \t\r\na b\n "));
  EXPECT_EQ(L"", trimmed(L" \n"));
}

}  // namespace
}  // namespace text
