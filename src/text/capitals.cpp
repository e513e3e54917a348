#include "text/capitals.h"

#include <algorithm>
#include <iterator>

namespace text {
namespace {

// Capitals from first to last, each `step` behind the one before it; its small letter lies `distance` behind it.
struct Letters {
  wchar_t first, last;
  int distance, step;
};
constexpr Letters kLetters[] = {
    {0x41, 0x5A, 32, 1},
    // Latin-1 and the Latin letters behind it; the sign of multiplication lies between two rows
    {0xC0, 0xD6, 32, 1},
    {0xD8, 0xDE, 32, 1},
    {0x100, 0x12E, 1, 2},
    {0x132, 0x136, 1, 2},
    {0x139, 0x147, 1, 2},
    {0x14A, 0x176, 1, 2},
    {0x178, 0x178, 0xFF - 0x178, 1},
    {0x179, 0x17D, 1, 2},
    {0x18F, 0x18F, 0x259 - 0x18F, 1},
    {0x1A0, 0x1A4, 1, 2},
    {0x1AF, 0x1AF, 1, 1},
    {0x1CD, 0x1DB, 1, 2},
    {0x1DE, 0x1EE, 1, 2},
    {0x1F8, 0x21E, 1, 2},
    {0x222, 0x232, 1, 2},
    {0x1E00, 0x1E94, 1, 2},
    {0x1EA0, 0x1EFE, 1, 2},
    // Greek
    {0x386, 0x386, 38, 1},
    {0x388, 0x38A, 37, 1},
    {0x38C, 0x38C, 64, 1},
    {0x38E, 0x38F, 63, 1},
    {0x391, 0x3A1, 32, 1},
    {0x3A3, 0x3AB, 32, 1},
    // Cyrillic
    {0x400, 0x40F, 80, 1},
    {0x410, 0x42F, 32, 1},
    {0x460, 0x480, 1, 2},
    {0x48A, 0x4BE, 1, 2},
    {0x4C0, 0x4C0, 15, 1},
    {0x4C1, 0x4CD, 1, 2},
    {0x4D0, 0x52E, 1, 2},
    // Armenian
    {0x531, 0x556, 48, 1},
};

// Letters whose way leads one way only.
struct Single {
  wchar_t from, to;
};
constexpr Single kToSmall[] = {{0x130, L'i'}, {0x1E9E, 0xDF}};
constexpr Single kToCapital[] = {{0x131, L'I'}, {0x17F, L'S'}, {0x3C2, 0x3A3}};

// shift: how far from the capital of a row the letter lies that is changed.
template <std::size_t N, class Shift, class Change>
std::wstring changed(std::wstring_view text, const Single (&singles)[N], Shift shift, Change change) {
  std::wstring result(text);
  for (wchar_t& c : result) {
    const auto* single =
        std::find_if(std::begin(singles), std::end(singles), [c](const Single& s) { return s.from == c; });
    if (single != std::end(singles)) {
      c = single->to;
      continue;
    }
    const auto* row = std::find_if(std::begin(kLetters), std::end(kLetters), [&](const Letters& letters) {
      const int capital = static_cast<int>(c) - shift(letters);
      return capital >= letters.first && capital <= letters.last && (capital - letters.first) % letters.step == 0;
    });
    if (row != std::end(kLetters)) c = change(c, *row);
  }
  return result;
}

}  // namespace

std::wstring inCapitals(std::wstring_view text) {
  return changed(
      text, kToCapital, [](const Letters& letters) { return letters.distance; },
      [](wchar_t c, const Letters& letters) { return static_cast<wchar_t>(c - letters.distance); });
}

std::wstring inSmallLetters(std::wstring_view text) {
  return changed(
      text, kToSmall, [](const Letters&) { return 0; },
      [](wchar_t c, const Letters& letters) { return static_cast<wchar_t>(c + letters.distance); });
}

}  // namespace text
