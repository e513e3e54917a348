#include "barcode/pdf417.h"

#include <algorithm>
#include <cmath>

#include "barcode/compaction.h"
#include "barcode/pdf417_patterns.h"

namespace barcode {
namespace {

constexpr int kMostCodewords = 928, kMostColumns = 30, kFewestRows = 3, kMostRows = 90, kHighestLevel = 8;
constexpr int kPadCodeword = 900;
constexpr int kLetterSet = 927, kLatin1 = 3;  // what follows is of the set that the second codeword names
constexpr int kModules = 17;                  // of a symbol character
constexpr int kFrameModules = 4 * 17 + 1;     // start and stop pattern and the two indicators of a row
constexpr std::uint32_t kStart = 0x1fea8, kStop = 0x3fa29;
constexpr int kStopModules = 18;

constexpr int correctionCodewords(int level) { return 2 << level; }

// ---- how much

// The level that the standard recommends for so many codewords of text.
int recommendedLevel(std::size_t codewords) {
  if (codewords <= 40) return 2;
  if (codewords <= 160) return 3;
  if (codewords <= 320) return 4;
  return 5;
}

bool fits(std::size_t textCodewords, int level) {
  return textCodewords + 1 + static_cast<std::size_t>(correctionCodewords(level)) <= kMostCodewords;
}

// Sets the level; false: the text doesn't fit.
bool chooseLevel(Pdf417& code, std::size_t textCodewords) {
  if (code.options & kFixedErrorLevel) return fits(textCodewords, code.errorLevel);
  code.errorLevel = recommendedLevel(textCodewords);
  while (code.errorLevel > 0 && !fits(textCodewords, code.errorLevel)) --code.errorLevel;
  return fits(textCodewords, code.errorLevel);
}

int bitmapRowsOf(const Pdf417& code) { return std::max(1, static_cast<int>(std::lround(code.rowHeight))); }

// The columns and rows for so many codewords whose shape comes nearest to the wanted one.
void chooseShape(Pdf417& code, int codewords) {
  double best = 0;
  for (int columns = 1; columns <= kMostColumns; ++columns) {
    const int rows = std::max(kFewestRows, (codewords + columns - 1) / columns);
    if (rows > kMostRows || rows * columns > kMostCodewords) continue;
    const double height = static_cast<double>(rows) * bitmapRowsOf(code), width = kModules * columns + kFrameModules;
    const double off = std::abs(std::log(height / width / code.aspectRatio));
    if (code.codeColumns > 0 && off >= best) continue;
    best = off;
    code.codeColumns = columns;
    code.codeRows = rows;
  }
}

// ---- error correction

// The polynomial whose zeros are 3, 3^2 ... 3^degree over GF(929), without its highest coefficient; lowest first.
std::vector<int> generator(int degree) {
  std::vector<int> coefficients{1};
  int zero = 1;
  for (int i = 0; i < degree; ++i) {
    zero = zero * 3 % kCodewords;
    coefficients.insert(coefficients.begin(), 0);
    for (std::size_t k = 0; k + 1 < coefficients.size(); ++k)
      coefficients[k] = (coefficients[k] + (kCodewords - zero) * coefficients[k + 1]) % kCodewords;
  }
  coefficients.pop_back();
  return coefficients;
}

// The codewords that make up the whole to a multiple of the generator.
std::vector<int> corrections(const std::vector<int>& data, int level) {
  const std::vector<int> factors = generator(correctionCodewords(level));
  std::vector<int> rest(factors.size(), 0);  // highest first
  for (const int codeword : data) {
    const int lead = (codeword + rest.front()) % kCodewords;
    for (std::size_t k = 0; k < rest.size(); ++k) {
      const int next = k + 1 < rest.size() ? rest[k + 1] : 0;
      rest[k] = (next + (kCodewords - lead) * factors[factors.size() - 1 - k]) % kCodewords;
    }
  }
  for (int& number : rest) number = (kCodewords - number) % kCodewords;
  return rest;
}

// ---- the bitmap

// The codewords at both ends of a row: its number, and by turns the rows, the level and the columns of the code.
struct Indicators {
  int left = 0, right = 0;
};
Indicators indicators(const Pdf417& code, int row) {
  const int rows = (code.codeRows - 1) / 3, level = code.errorLevel * 3 + (code.codeRows - 1) % 3,
            columns = code.codeColumns - 1, number = row / 3 * 30;
  switch (row % kClusters) {
    case 0:
      return {number + rows, number + columns};
    case 1:
      return {number + level, number + rows};
    default:
      return {number + columns, number + level};
  }
}

// Sets bits from the left.
class BitRow {
 public:
  explicit BitRow(int columns) : bytes_((static_cast<std::size_t>(columns) + 7) / 8, 0) {}
  void add(std::uint32_t bits, int count) {
    for (int i = count - 1; i >= 0; --i, ++column_)
      if (bits >> i & 1U) bytes_[column_ / 8] = static_cast<std::uint8_t>(bytes_[column_ / 8] | 0x80U >> column_ % 8);
  }
  void addCodeword(int cluster, int codeword) {
    add(0x10000U | kPatterns[static_cast<std::size_t>(cluster)][static_cast<std::size_t>(codeword)], kModules);
  }
  void invert() {
    for (std::uint8_t& byte : bytes_) byte = static_cast<std::uint8_t>(~byte);
  }
  [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

 private:
  std::vector<std::uint8_t> bytes_;
  std::size_t column_ = 0;
};

void paintRows(Pdf417& code) {
  code.bitColumns = kModules * code.codeColumns + kFrameModules;
  auto codeword = code.codewords.begin();
  for (int row = 0; row < code.codeRows; ++row) {
    BitRow bits(code.bitColumns);
    const int cluster = row % kClusters;
    const Indicators ends = indicators(code, row);
    bits.add(kStart, kModules);
    bits.addCodeword(cluster, ends.left);
    for (int column = 0; column < code.codeColumns; ++column) bits.addCodeword(cluster, *codeword++);
    bits.addCodeword(cluster, ends.right);
    bits.add(kStop, kStopModules);
    if (code.options & kInvertedBitmap) bits.invert();
    for (int i = 0; i < bitmapRowsOf(code); ++i)
      code.outBits.insert(code.outBits.end(), bits.bytes().begin(), bits.bytes().end());
  }
  code.lenBits = static_cast<int>(code.outBits.size());
}

// What the code says, without its length, padding and correction. A text that fits no code isn't looked at.
std::vector<int> message(const Pdf417& code) {
  if (code.text.size() > kLongestText) return std::vector<int>(kMostCodewords);
  std::vector<int> words = compacted(code.text);
  if (code.options & kLatin1Stated) words.insert(words.begin(), {kLetterSet, kLatin1});
  return words;
}

bool isUsable(const Pdf417& code) {
  constexpr double kHighest = 100;  // of row height and ratio; what is beyond is a mistake
  const auto isBetween = [](double value) { return value > 0 && value <= kHighest; };
  const bool isLevel = code.errorLevel >= 0 && code.errorLevel <= kHighestLevel;
  return !code.text.empty() && isBetween(code.aspectRatio) && isBetween(code.rowHeight) &&
         (isLevel || !(code.options & kFixedErrorLevel));
}

}  // namespace

void pdf417init(Pdf417& code) { code = Pdf417(); }

void pdf417free(Pdf417& code) { code = Pdf417(); }

void paintCode(Pdf417& code) {
  Pdf417 fresh;
  fresh.text = std::move(code.text);
  fresh.options = code.options;
  fresh.errorLevel = code.errorLevel;
  fresh.aspectRatio = code.aspectRatio;
  fresh.rowHeight = code.rowHeight;
  code = std::move(fresh);
  if (!isUsable(code)) {
    code.error = kPdf417BadInput;
    return;
  }
  std::vector<int> words = message(code);
  if (!chooseLevel(code, words.size())) {
    code.error = kPdf417TextTooLong;
    return;
  }
  const int corrected = correctionCodewords(code.errorLevel);
  chooseShape(code, static_cast<int>(words.size()) + 1 + corrected);
  const int data = code.codeColumns * code.codeRows - corrected;
  words.insert(words.begin(), data);
  words.resize(static_cast<std::size_t>(data), kPadCodeword);
  const std::vector<int> correction = corrections(words, code.errorLevel);
  words.insert(words.end(), correction.begin(), correction.end());
  code.codewords = std::move(words);
  paintRows(code);
}

}  // namespace barcode
