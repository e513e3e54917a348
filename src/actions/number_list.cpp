#include "actions/number_list.h"

#include <algorithm>
#include <cmath>

#include "text/numbers.h"
#include "text/pieces.h"

namespace actions {
namespace {

constexpr std::wstring_view kSeparators = L" \t,;";

std::size_t digitsAt(std::wstring_view text, std::size_t at) {
  std::size_t count = 0;
  while (at + count < text.size() && text[at + count] >= L'0' && text[at + count] <= L'9') ++count;
  return count;
}

bool isDecimal(std::wstring_view text) {
  const auto isAny = [&](std::size_t at, std::wstring_view of) {
    return at < text.size() && of.find(text[at]) != of.npos;
  };
  std::size_t at = isAny(0, L"+-") ? 1 : 0;
  std::size_t digits = digitsAt(text, at);
  at += digits;
  if (isAny(at, L".")) {
    const std::size_t behind = digitsAt(text, ++at);
    at += behind;
    digits += behind;
  }
  if (digits != 0 && isAny(at, L"eE")) {
    ++at;
    if (isAny(at, L"+-")) ++at;
    const std::size_t exponent = digitsAt(text, at);
    if (exponent == 0) return false;
    at += exponent;
  }
  return digits != 0 && at == text.size();
}

}  // namespace

std::optional<double> wholeNumber(std::wstring_view text) {
  const std::wstring_view piece = text::trimmed(text);
  if (!isDecimal(piece)) return std::nullopt;
  const auto read = text::readDouble(piece);
  if (read.fault != text::NumberFault::none || !std::isfinite(read.value)) return std::nullopt;
  return read.value;
}

std::optional<std::vector<double>> numberList(std::wstring_view text) {
  std::vector<double> numbers;
  for (std::size_t at = text.find_first_not_of(kSeparators); at < text.size();
       at = text.find_first_not_of(kSeparators, at)) {
    const std::size_t end = std::min(text.find_first_of(kSeparators, at), text.size());
    const auto number = wholeNumber(text.substr(at, end - at));
    if (!number) return std::nullopt;
    numbers.push_back(*number);
    at = end;
  }
  return numbers;
}

}  // namespace actions
