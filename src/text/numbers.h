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

enum class NumberFault { none, notANumber, outOfRange };
// As C's wcstol and wcstod with their error reports: `value` is usable only with NumberFault::none.
struct ParsedInt {
  int value = 0;
  NumberFault fault = NumberFault::none;
};
struct ParsedDouble {
  double value = 0;
  NumberFault fault = NumberFault::none;
};
// Leading blanks and trailing text are allowed, as there.
ParsedInt readInt(std::wstring_view text);
ParsedDouble readDouble(std::wstring_view text);
// 0 where readDouble finds no number.
double parseDouble(std::wstring_view text);

// The shortest decimal text that reads back as the same number.
std::wstring shortest(double value);

}  // namespace text
