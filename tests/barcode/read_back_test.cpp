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

}  // namespace
}  // namespace test
