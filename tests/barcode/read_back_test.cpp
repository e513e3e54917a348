// PDF417 codes as ZXing's reader reads them.
#include <gtest/gtest.h>

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

TEST(ReadBack, AllLevelsWithWhatTheyCorrect) {
  const std::string text = repeated("Bracket 4711-0815, rev. C; ", 120);
  for (int level = 0; level <= 8; ++level) {
    const barcode::Pdf417 code = painted(text, level);
    // Codewords that can't be read where nobody knows it count twice, and two are kept for detection.
    int left = std::max(0, (2 << level) / 2 - 1);
    std::vector<LostCodewords> lost;
    for (int row = 0; row < code.codeRows && left > 0; ++row) {
      const int count = std::min({left, code.codeColumns, (2 << level) / 2 / code.codeRows + 1});
      lost.push_back({row, row % (code.codeColumns - count + 1), count});
      left -= count;
    }
    EXPECT_EQ(0, left);
    EXPECT_EQ(text, scanned(pictureOf(code, lost), "PDF417")) << "level " << level;
  }
}

TEST(ReadBack, NotWhatIsDamagedBeyondItsLevel) {
  const barcode::Pdf417 code = painted("Bracket 4711-0815", 1);
  std::vector<LostCodewords> lost;
  for (int row = 0; row < 5; ++row) lost.push_back({row, 0, 1});
  EXPECT_EQ("", scanned(pictureOf(code, lost), "PDF417"));
}

}  // namespace
}  // namespace test
