#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "text/encoding.h"
#include "text/format.h"

namespace text {
namespace {

template <class C>
bool isBlank(C c) {
  return c == C(' ') || (c >= C('\t') && c <= C('\r'));
}
template <class C>
bool isDigit(C c) {
  return c >= C('0') && c <= C('9');
}
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

bool isAllBlank(std::wstring_view text) { return std::all_of(text.begin(), text.end(), &isBlank<wchar_t>); }

// end: behind the last character that counts.
template <class C>
ParsedInt integer(std::basic_string_view<C> text, std::size_t& end) {
  std::size_t at = 0;
  while (at < text.size() && isBlank(text[at])) ++at;
  const bool negative = at < text.size() && text[at] == C('-');
  if (negative || (at < text.size() && text[at] == C('+'))) ++at;
  if (at == text.size() || !isDigit(text[at])) return {0, NumberFault::notANumber};
  constexpr std::int64_t kLimit = std::int64_t{std::numeric_limits<int>::max()} + 1;
  std::int64_t value = 0;
  for (; at < text.size() && isDigit(text[at]); ++at) {
    value = std::min(value * 10 + static_cast<std::int64_t>(text[at] - C('0')), kLimit + 1);
  }
  end = at;
  if (negative) value = -value;
  const std::int64_t nearest = std::clamp(value, -kLimit, kLimit - 1);
  return {static_cast<int>(nearest), nearest == value ? NumberFault::none : NumberFault::outOfRange};
}

template <class C>
int integer(std::basic_string_view<C> text) {
  std::size_t end = 0;
  return integer(text, end).value;
}

// The characters that can belong to a number, its sign apart.
std::string numberPart(std::wstring_view text) {
  std::string part;
  for (const wchar_t c : text) {
    const bool belongs = isDigit(c) || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'.' || c == L'-' ||
                         c == L'+' || c == L'(' || c == L')' || c == L'_';
    if (!belongs) break;
    part += static_cast<char>(c);
  }
  return part;
}

bool isHexadecimal(std::string_view part) {
  if (part.size() < 3 || part[0] != '0' || (part[1] != 'x' && part[1] != 'X')) return false;
  return isHexDigit(part[2]) || (part[2] == '.' && part.size() > 3 && isHexDigit(part[3]));
}

// Whether a number out of range is too large; else it is too small. from_chars doesn't tell.
bool isTooLarge(std::string_view part, bool hexadecimal) {
  const char exponentMark = hexadecimal ? 'p' : 'e';
  long long magnitude = 0;
  bool behindPoint = false, significant = false;
  std::size_t at = 0;
  for (; at < part.size(); ++at) {
    const char c = part[at];
    if (c == '.' && !behindPoint) {
      behindPoint = true;
    } else if (hexadecimal ? isHexDigit(c) : isDigit(c)) {
      significant = significant || c != '0';
      if (significant && !behindPoint) ++magnitude;
      if (!significant && behindPoint) --magnitude;
    } else {
      break;
    }
  }
  if (hexadecimal) magnitude *= 4;
  if (at < part.size() && (part[at] | 0x20) == exponentMark) {
    magnitude += integer(part.substr(at + 1));
  }
  return magnitude > 0;
}

}  // namespace

int parseInt(std::wstring_view text) { return integer(text); }
int parseInt(std::string_view text) { return integer(text); }

ParsedInt readInt(std::wstring_view text) {
  std::size_t end = 0;
  ParsedInt read = integer(text, end);
  if (read.fault != NumberFault::none) return read;
  const auto sameAsAll = [&] {
    const auto all = wholeDouble(text);
    return all && *all == read.value;
  };
  read.whole = isAllBlank(text.substr(end)) || sameAsAll();
  return read;
}

ParsedDouble readDouble(std::wstring_view text) {
  std::size_t start = 0;
  while (start < text.size() && isBlank(text[start])) ++start;
  const bool negative = start < text.size() && text[start] == L'-';
  if (negative || (start < text.size() && text[start] == L'+')) ++start;
  const std::string part = numberPart(text.substr(start));
  // from_chars takes a minus of its own; a second sign is no number.
  if (part.empty() || part[0] == '-' || part[0] == '+') return {0, NumberFault::notANumber};
  const bool hexadecimal = isHexadecimal(part);
  const std::string_view digits = std::string_view(part).substr(hexadecimal ? 2 : 0);
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                            hexadecimal ? std::chars_format::hex : std::chars_format::general);
  if (error == std::errc::invalid_argument) return {0, NumberFault::notANumber};
  NumberFault fault = std::isfinite(value) ? NumberFault::none : NumberFault::notFinite;
  if (error == std::errc::result_out_of_range) {
    value = isTooLarge(digits, hexadecimal) ? HUGE_VAL : 0;
    fault = NumberFault::outOfRange;
  }
  const auto length = static_cast<std::size_t>(end - part.data());
  const bool whole = fault != NumberFault::outOfRange && isAllBlank(text.substr(start + length));
  return {negative ? -value : value, fault, whole};
}

double parseDouble(std::wstring_view text) { return readDouble(text).value; }

std::optional<int> wholeInt(std::wstring_view text) {
  const ParsedInt read = readInt(text);
  return read.whole && read.fault == NumberFault::none ? std::optional(read.value) : std::nullopt;
}

std::optional<double> wholeDouble(std::wstring_view text) {
  const ParsedDouble read = readDouble(text);
  return read.whole && read.fault == NumberFault::none ? std::optional(read.value) : std::nullopt;
}

std::wstring shortest(double value) {
  std::array<char, 64> buffer{};
  char* const first = buffer.data();
  char* const last = first + buffer.size();
  const double size = std::fabs(value);
  // As people write numbers: an exponent only where plain digits would be long rows of zeros.
  const bool plain = size == 0 || (size >= 1e-5 && size < 1e15);
  const auto form = plain ? std::chars_format::fixed : std::chars_format::general;
  const auto end = std::to_chars(first, last, value, form).ptr;
  return fromLatin1({first, static_cast<std::size_t>(end - first)});
}

std::wstring exactFixed(double value) {
  std::wstring fixed = format(L"%f", value);
  return parseDouble(fixed) == value ? fixed : shortest(value);
}

}  // namespace text
