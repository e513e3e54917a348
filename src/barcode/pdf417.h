// PDF417 codes by the rules of ISO/IEC 15438.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace barcode {

// Of `options`.
constexpr int kFixedErrorLevel = 16;  // errorLevel is what is wanted; else the recommended level
constexpr int kInvertedBitmap = 128;  // clear bits are dark; else set bits are
constexpr int kLatin1Stated = 256;    // the code says that its letters are Latin-1; else a reader guesses

enum Pdf417Error : int {
  kPdf417Done = 0,
  kPdf417TextTooLong = 1,  // more than 928 codewords with those of the error correction
  kPdf417BadInput = 2,     // an empty text, a level outside 0 to 8, a ratio or height that isn't positive
};

struct Pdf417 {
  std::string text;  // Latin-1
  int options = 0;
  int errorLevel = 0;        // 0 to 8; after paintCode without kFixedErrorLevel the one that was taken
  double aspectRatio = 0.5;  // height of the whole code by its width; decides between columns and rows
  double rowHeight = 3.0;    // of a row of the code, in modules; rounded to whole ones, at least 1

  // ---- what paintCode gives
  // The bitmap, a module a bit, its top row first. Each row begins with a byte of its own, the leftmost module is bit
  // 7; what fills up the last byte is light.
  std::vector<std::uint8_t> outBits;
  int lenBits = 0;     // bytes of outBits
  int bitColumns = 0;  // modules of a row
  int error = kPdf417Done;
  int codeColumns = 0, codeRows = 0;  // columns of data, and rows
  std::vector<int> codewords;         // their number first; the text, padding, error correction
};

// An empty record with the defaults.
void pdf417init(Pdf417& code);
// Encodes `text` in the fewest codewords. On an error there is no bitmap.
void paintCode(Pdf417& code);
// Gives back the memory of what paintCode made and of the text.
void pdf417free(Pdf417& code);

}  // namespace barcode
