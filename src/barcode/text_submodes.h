// The submodes of PDF417's text compaction: which of their thirty values means a character, and how one leads to
// another.
#pragma once

#include <array>
#include <string_view>

namespace barcode {

enum Submode : int { kAlpha, kLower, kMixed, kPunctuation };
constexpr int kSubmodes = 4;

constexpr int kNoValue = -1;
constexpr int kPadValue = 29;  // fills up a codeword; in the punctuation submode it leads to alpha

// By submode, its characters in the order of their values; \0 is a latch or shift.
constexpr std::array<std::string_view, kSubmodes> kSubmodeCharacters = {
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ ", "abcdefghijklmnopqrstuvwxyz ",
    std::string_view("0123456789&\r\t,:#-.$/+%*=^\0 ", 27), ";<>@[\\]_`~!\r\t,:\n-.$/\"|*()?{}'"};

// A value that leads from one submode to another, for good or for one character.
struct SubmodeStep {
  Submode from, to;
  int value;
};
constexpr SubmodeStep kLatches[] = {
    {kAlpha, kLower, 27}, {kAlpha, kMixed, 28},       {kLower, kMixed, 28},       {kMixed, kLower, 27},
    {kMixed, kAlpha, 28}, {kMixed, kPunctuation, 25}, {kPunctuation, kAlpha, 29},
};
constexpr SubmodeStep kShifts[] = {
    {kAlpha, kPunctuation, 29}, {kLower, kAlpha, 27}, {kLower, kPunctuation, 29}, {kMixed, kPunctuation, 29}};

// The value of a character in a submode; kNoValue: it has none there.
using SubmodeValues = std::array<std::array<signed char, 256>, kSubmodes>;
constexpr SubmodeValues submodeValues() {
  SubmodeValues values{};
  for (std::size_t mode = 0; mode < kSubmodes; ++mode) {
    for (signed char& one : values[mode]) one = kNoValue;
    const std::string_view characters = kSubmodeCharacters[mode];
    for (std::size_t i = 0; i < characters.size(); ++i)
      if (characters[i] != '\0') values[mode][static_cast<unsigned char>(characters[i])] = static_cast<signed char>(i);
  }
  return values;
}

}  // namespace barcode
