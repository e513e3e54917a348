// The encoder of PDF417: its compaction, what it adds for correction, its shape and its bitmap.
#include "barcode/pdf417.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "barcode/compaction.h"
#include "pdf417_reader.h"

namespace test {
namespace {

using barcode::Pdf417;

// level: 0 to 8, or 9 for the recommended one.
Pdf417 coded(const std::string& text, int level = 9) {
  Pdf417 code;
  barcode::pdf417init(code);
  code.text = text;
  code.options = level == 9 ? barcode::kInvertedBitmap : barcode::kInvertedBitmap | barcode::kFixedErrorLevel;
  code.errorLevel = level == 9 ? 0 : level;
  barcode::paintCode(code);
  return code;
}

std::string readBack(const Pdf417& code) {
  return CodewordReader({code.codewords.begin() + 1, code.codewords.begin() + code.codewords.front()}).text();
}

TEST(Pdf417, TakesTheFewestCodewords) {
  struct Case {
    std::string text;
    std::size_t codewords;
  };
  const Case cases[] = {
      {"A", 1},
      {"PDF417", 4},
      {"AAAAaaaa", 5},       // 4 + latch + 4 = 9 halves
      {"AAAAaA", 4},         // 4 + latch + 1 + shift and 1 = 8 halves
      {"aaAaaa", 4},         // latch + 2 + shift and 1 + 3
      {"aaAAaaa", 5},        // latch, two shifts
      {"aaAAAAAaa", 7},      // out of lower only through mixed: shifts are as short
      {"A;A", 2},            // a shift
      {"A;<>@[A", 5},        // latches to mixed and punctuation, and back
      {"12", 2},             // mixed: a latch and two
      {"1234567890123", 6},  // 902 and 13 digits in five
      {std::string(44, '7'), 16},
      {std::string(45, '7'), 17},
      {"AB\xfc"
       "AB",
       4},           // a byte between: two codewords of text and the shift with its byte
      {"A\xfc", 3},  // a pad, or a byte latch with two bytes
      {"\xe4\xf6\xfc\xdf\xe4\xf6", 6},
      {"\xe4\xf6\xfc\xdf\xe4\xf6\xfc", 7},
      {"ABCDEFGH" + std::string(20, '5') + "abcdefgh", 18},
  };
  for (const Case& entry : cases) {
    EXPECT_EQ(entry.codewords, barcode::compacted(entry.text).size()) << entry.text;
    EXPECT_EQ(entry.text, CodewordReader(barcode::compacted(entry.text)).text());
  }
}

// Pieces of one alphabet behind one another, so that every latch, shift and pad comes at every place.
TEST(Pdf417, KeepsEveryText) {
  const std::string latin = [] {
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    return all;
  }();
  const std::string alphabets[] = {"ABCXYZ ",       "abcxyz ", "0123456789", ";<>@[\\]_`~!\"|()?{}'",
                                   ",:-.$/*\r\t\n", "&#+%=^",  latin};
  std::mt19937 random(417);
  const auto below = [&](std::size_t end) { return static_cast<std::size_t>(random() % end); };
  for (int round = 0; round < 1500; ++round) {
    std::string text;
    for (std::size_t pieces = 1 + below(8); pieces > 0; --pieces) {
      const std::string& alphabet = alphabets[below(std::size(alphabets))];
      for (std::size_t i = 1 + below(round % 3 == 0 ? 30 : 4); i > 0; --i) text += alphabet[below(alphabet.size())];
    }
    const Pdf417 code = coded(text, 2);
    ASSERT_EQ(barcode::kPdf417Done, code.error) << text;
    ASSERT_EQ(text, readBack(code)) << "round " << round;
  }
}

TEST(Pdf417, AddsTheCodewordsOfItsLevel) {
  EXPECT_EQ((std::vector<int>{5, 453, 178, 121, 239, 452, 327, 657, 619}), coded("PDF417", 1).codewords);
  for (int level = 0; level <= 8; ++level) {
    const Pdf417 code = coded("Level " + std::to_string(level), level);
    ASSERT_EQ(std::size_t(code.codeColumns * code.codeRows), code.codewords.size());
    EXPECT_EQ(2 << level, static_cast<int>(code.codewords.size()) - code.codewords.front());
    // As a polynomial the codewords have the zeros 3, 3^2 and so on.
    for (int i = 0, zero = 3; i < 2 << level; ++i, zero = zero * 3 % 929) {
      int value = 0;
      for (const int codeword : code.codewords) value = (value * zero + codeword) % 929;
      ASSERT_EQ(0, value) << "level " << level << ", zero " << i;
    }
  }
}

TEST(Pdf417, ChoosesItsLevelByTheCodewordsOfTheText) {
  struct Case {
    std::size_t codewords;
    int level;
  };
  const Case cases[] = {{1, 2},   {40, 2},  {41, 3},  {160, 3}, {161, 4}, {320, 4},
                        {321, 5}, {863, 5}, {864, 4}, {895, 4}, {896, 3}, {925, 0}};
  for (const Case& entry : cases) {
    const Pdf417 code = coded(std::string(entry.codewords * 2, 'A'));
    EXPECT_EQ(barcode::kPdf417Done, code.error) << entry.codewords;
    EXPECT_EQ(entry.level, code.errorLevel) << entry.codewords;
  }
}

TEST(Pdf417, RefusesWhatFitsNoCode) {
  struct Case {
    std::string text;
    int level, error;
  };
  const Case cases[] = {
      {"", 9, barcode::kPdf417BadInput},
      {"A", -1, barcode::kPdf417BadInput},
      {"A", 10, barcode::kPdf417BadInput},
      {std::string(1850, 'A'), 9, barcode::kPdf417Done},
      {std::string(1851, 'A'), 9, barcode::kPdf417TextTooLong},
      {std::string(830, 'A'), 8, barcode::kPdf417Done},
      {std::string(831, 'A'), 8, barcode::kPdf417TextTooLong},
      {std::string(2710, '1'), 0, barcode::kPdf417Done},
      {std::string(2711, '1'), 0, barcode::kPdf417TextTooLong},
      {std::string(50000000, 'A'), 9, barcode::kPdf417TextTooLong},
  };
  for (const Case& entry : cases) {
    const Pdf417 code = coded(entry.text, entry.level);
    EXPECT_EQ(entry.error, code.error) << entry.text.size() << " at " << entry.level;
    EXPECT_EQ(entry.error == barcode::kPdf417Done, !code.outBits.empty());
  }
  for (const double wrong : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
    Pdf417 code;
    code.text = "A";
    code.aspectRatio = wrong;
    barcode::paintCode(code);
    EXPECT_EQ(barcode::kPdf417BadInput, code.error) << wrong;
    code.aspectRatio = 0.5;
    code.rowHeight = wrong;
    barcode::paintCode(code);
    EXPECT_EQ(barcode::kPdf417BadInput, code.error) << wrong;
  }
}

TEST(Pdf417, HasTheShapeThatIsAskedFor) {
  for (const double ratio : {0.1, 0.5, 2.0}) {
    for (const std::size_t length : {100U, 600U, 1800U}) {
      Pdf417 code;
      code.text = std::string(length, 'A');
      code.aspectRatio = ratio;
      barcode::paintCode(code);
      ASSERT_EQ(barcode::kPdf417Done, code.error);
      EXPECT_TRUE(code.codeColumns >= 1 && code.codeColumns <= 30 && code.codeRows >= 3 && code.codeRows <= 90 &&
                  code.codeColumns * code.codeRows <= 928);
      const bool isFree = code.codeRows > 3 && code.codeColumns < 30 && code.codeRows < 88 && length < 1000;
      const double got = 3.0 * code.codeRows / code.bitColumns;
      if (isFree) EXPECT_NEAR(1, got / ratio, 0.4) << ratio << ", " << length;
    }
  }
}

// Widths, from a dark one on, as modules.
std::string bars(const std::string& widths) {
  std::string modules;
  for (std::size_t i = 0; i < widths.size(); ++i)
    modules += std::string(static_cast<std::size_t>(widths[i] - '0'), i % 2 == 0 ? '#' : ' ');
  return modules;
}

TEST(Pdf417, PaintsModules) {
  Pdf417 code = coded("PDF417", 1);
  ASSERT_EQ(1, code.codeColumns);
  EXPECT_EQ(17 + 69, code.bitColumns);
  EXPECT_EQ(11 * 9 * 3, code.lenBits);
  const auto row = [&](int number) {
    std::string modules;
    for (int i = 0; i < 88; ++i)
      modules += code.outBits[static_cast<std::size_t>(number * 11 + i / 8)] >> (7 - i % 8) & 1 ? ' ' : '#';
    return modules;
  };
  // Start, 2 (of 9 rows) in cluster 0, 5 (the codewords of data), 0 (of one column), stop, two light ones to fill up.
  EXPECT_EQ(bars("81111113"
                 "51111152"
                 "51111251"
                 "31111136"
                 "7113111212"),
            row(0));
  EXPECT_EQ(bars("81111113"
                 "41111315"
                 "11111344"
                 "41111144"
                 "7113111212")
                .substr(0, 34),
            row(3).substr(0, 34));
  EXPECT_EQ(row(0), row(2));
  EXPECT_NE(row(2), row(3));
  const std::vector<std::uint8_t> inverted = code.outBits;
  code.options &= ~barcode::kInvertedBitmap;
  barcode::paintCode(code);
  ASSERT_EQ(inverted.size(), code.outBits.size());
  for (std::size_t i = 0; i < inverted.size(); ++i) EXPECT_EQ(0xff, inverted[i] ^ code.outBits[i]);
  barcode::pdf417free(code);
  EXPECT_TRUE(code.text.empty() && code.outBits.empty() && code.lenBits == 0);
}

}  // namespace
}  // namespace test
