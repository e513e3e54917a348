// Numbers in texts, always in the C locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace text {

// As C's atoi: blanks, a sign, digits; what follows is ignored, no digits give 0. Beyond the range: the nearest end.
int parseInt(std::wstring_view text);
int parseInt(std::string_view text);

// notFinite: the words for infinity and for no number, "Information" and "Nanocoat" among them, as C reads them.
enum class NumberFault { none, notANumber, outOfRange, notFinite };
// As C's wcstol and wcstod with their error reports: `value` is usable only with NumberFault::none.
// whole: the text says nothing else than this value; blanks may stand around it, and "7.0" is all of 7.
struct ParsedInt {
  int value = 0;
  NumberFault fault = NumberFault::none;
  bool whole = false;
};
struct ParsedDouble {
  double value = 0;
  NumberFault fault = NumberFault::none;
  bool whole = false;
};
// Leading blanks and trailing text are allowed, as there.
ParsedInt readInt(std::wstring_view text);
ParsedDouble readDouble(std::wstring_view text);
// 0 where readDouble finds no number.
double parseDouble(std::wstring_view text);

// The number that is the whole text; nothing for a text that says more, or none, or one that isn't finite or too large.
std::optional<int> wholeInt(std::wstring_view text);
std::optional<double> wholeDouble(std::wstring_view text);

// The shortest decimal text that reads back as the same number.
std::wstring shortest(double value);
// As "%f" writes it, where that reads back as the same number; else the shortest text that does.
std::wstring exactFixed(double value);

}  // namespace text
