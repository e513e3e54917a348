// PDF417 and QR codes as ZXing's reader reads them.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "barcode/qr.h"
#include "support/scanner.h"

namespace test {
namespace {

barcode::Pdf417 painted(const std::string& text, int level) {
  barcode::Pdf417 code;
  code.text = text;
  code.options = barcode::kInvertedBitmap | (level < 9 ? barcode::kFixedErrorLevel : 0);
  code.errorLevel = level < 9 ? level : 0;
  barcode::paintCode(code);
  EXPECT_EQ(barcode::kPdf417Done, code.error) << text;
  return code;
}

std::string repeated(const std::string& piece, std::size_t length) {
  std::string text;
  while (text.size() < length) text += piece;
  return text.substr(0, length);
}

TEST(ReadBack, TextsOfEveryKindAndLength) {
  const std::string umlauts =
      "Gr\xf6\xdf"
      "e \xc4\xd6\xdc \xb1"
      "0,1 \xb5m ";
  const std::string texts[] = {"7",
                               "A",
                               "\xfc",
                               "\xfc"
                               "A",
                               "A\xfc",
                               "ab\xfc"
                               "cd\xe4;",
                               "a;\xfc;b",
                               "\n",
                               "P-4711/B\nRev. C\n2024-05-31",
                               repeated("0123456789", 44),
                               repeated("9876543210", 89),
                               repeated("THE QUICK BROWN FOX ", 300),
                               repeated("The Quick Brown Fox, 12345678901234567890 (c) ", 500),
                               repeated(";<>@[\\]_`~!\"|()?{}'", 200),
                               repeated("&\t,:#-.$/+%*=^ab", 200),
                               repeated(umlauts, 11),
                               repeated(umlauts, 12),
                               repeated(umlauts, 6),
                               repeated("a1\xe4", 400),
                               repeated("Line feed\n" + umlauts + "0815471108154711;", 1000),
                               repeated("4", 1000),
                               repeated("Mixed Case Text ", 1000)};
  for (const std::string& text : texts) EXPECT_EQ(text, scanned(pictureOf(painted(text, 9)), "PDF417"));
}

// A wrong codeword takes two of the correction.
TEST(ReadBack, AllLevelsWithWhatTheyCorrectAndNoMore) {
  const std::string text = repeated("Bracket 4711-0815, rev. C; ", 120);
  for (int level = 0; level <= 8; ++level) {
    for (const int beyond : {0, 1}) {
      barcode::Pdf417 code = painted(text, level);
      damage(code, (2 << level) / 2 + beyond);
      const std::string read = scanned(pictureOf(code), "PDF417");
      // The lowest level finds no more than one wrong codeword, and may take two for another text.
      EXPECT_EQ(beyond == 0, read == text) << "level " << level << ": " << read;
    }
  }
}

// The modules of the smallest QR code that hold data, in the order of their bits: up and down in strips of two columns
// from the right, past finders, formats and the timing lines.
std::vector<std::pair<int, int>> dataModules() {
  constexpr int kWidth = 21, kTiming = 6, kFinder = 9, kFar = kWidth - 8;
  std::vector<std::pair<int, int>> modules;
  bool isUp = true;
  for (int right = kWidth - 1; right > 0; right -= 2, isUp = !isUp) {
    if (right == kTiming) --right;
    for (int i = 0; i < kWidth; ++i)
      for (const int column : {right, right - 1}) {
        const int row = isUp ? kWidth - 1 - i : i;
        const bool isFixed = row == kTiming || (row < kFinder && (column < kFinder || column >= kFar)) ||
                             (row >= kFar && column < kFinder);
        if (!isFixed) modules.emplace_back(row, column);
      }
  }
  return modules;
}

Picture pictureOf(const barcode::QrCode& code) {
  constexpr int kDots = 4, kQuiet = 4 * kDots;
  Picture picture(code.width * kDots + 2 * kQuiet, code.width * kDots + 2 * kQuiet);
  for (int row = 0; row < code.width; ++row)
    for (int column = 0; column < code.width; ++column)
      if (code.isDark(row, column)) picture.fill(kQuiet + column * kDots, kQuiet + row * kDots, kDots, kDots);
  return picture;
}

TEST(ReadBack, QrCodesWithWhatTheirLevelCorrectsAndNoMore) {
  const std::string text = "Rev. C7";  // fills the smallest code at the highest level
  constexpr int kCorrection[] = {7, 10, 13, 17};
  const auto modules = dataModules();
  ASSERT_EQ(std::size_t(26 * 8), modules.size());
  for (int level = 0; level < 4; ++level) {
    // Level by level the standard lets 2, 4, 6 and 8 be corrected; what is over guards against another text.
    const int most = kCorrection[level] / 2, standard = 2 * (level + 1);
    for (const int wrong : {0, standard, most + 1}) {
      auto code = barcode::qrCode(text, level, 2, true);
      ASSERT_TRUE(code && code->width == 21);
      for (int i = 0; i < wrong; ++i)
        for (int bit = 0; bit < 8; ++bit) {
          const auto [row, column] = modules[std::size_t(i * 26 / wrong * 8 + bit)];
          code->data[std::size_t(row * code->width + column)] ^= 1U;
        }
      EXPECT_EQ(wrong <= most, scanned(pictureOf(*code), "QRCode") == text) << "level " << level << ", " << wrong;
    }
  }
}

// A reader that isn't told the letters guesses them by what stands side by side.
TEST(ReadBack, TextsWhoseLettersAreStated) {
  struct Case {
    std::string latin1, utf8;
  };
  const Case cases[] = {
      {"\xb1"
       "0,1 \xb5m \xd8"
       "12 \xb0"
       "C",
       "\xc2\xb1"
       "0,1 \xc2\xb5m \xc3\x98"
       "12 \xc2\xb0"
       "C"},
      {"\xb0\xb1\xb2\xb3", "\xc2\xb0\xc2\xb1\xc2\xb2\xc2\xb3"},
      {"\xc3\x84", "\xc3\x83\xc2\x84"},  // looks like one letter of UTF-8
      {"\xdf", "\xc3\x9f"},
      {"PLAIN 0123456789", "PLAIN 0123456789"},
      {repeated("123456", 100), repeated("123456", 100)},
  };
  const auto pdf417 = [](const std::string& text, int options) {
    barcode::Pdf417 code;
    code.text = text;
    code.options = barcode::kInvertedBitmap | options;
    barcode::paintCode(code);
    EXPECT_EQ(barcode::kPdf417Done, code.error) << text;
    return code;
  };
  for (const Case& entry : cases) {
    for (int level = 0; level < 4; ++level) {
      const auto qr = barcode::latin1QrCode(entry.latin1, level, 2, true);
      ASSERT_TRUE(qr);
      EXPECT_EQ(entry.utf8 + " (stated)", scannedText(pictureOf(*qr), "QRCode"));
    }
    EXPECT_EQ(entry.utf8 + " (stated)",
              scannedText(test::pictureOf(pdf417(entry.latin1, barcode::kLatin1Stated)), "PDF417"));
  }
  // Not stated, the first is another text for it.
  EXPECT_NE(cases[0].utf8, scannedText(pictureOf(*barcode::qrCode(cases[0].latin1, 0, 2, true)), "QRCode"));
  EXPECT_NE(cases[0].utf8, scannedText(test::pictureOf(pdf417(cases[0].latin1, 0)), "PDF417"));
  const auto small = barcode::latin1QrCode("Gr\xfc\xdf", 1, 3, false);
  ASSERT_TRUE(small);
  EXPECT_EQ("GR\xc3\xbc\xc3\x9f (stated)", scannedText(pictureOf(*small), "QRCode"));
  for (const int mode : {0, 1, 4, 5}) EXPECT_FALSE(barcode::latin1QrCode("1", 0, mode, true)) << mode;
  EXPECT_FALSE(barcode::latin1QrCode("", 0, 2, true) || barcode::latin1QrCode("1", 4, 2, true));
  EXPECT_FALSE(barcode::latin1QrCode(repeated("a", 2953), 0, 2, true));  // fits without the statement
  EXPECT_TRUE(barcode::qrCode(repeated("a", 2953), 0, 2, true));
}

}  // namespace
}  // namespace test
