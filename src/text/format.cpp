#include "text/format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "text/code_points.h"
#include "text/units.h"

namespace text {
namespace {

constexpr int kMaxWidth = 4096;
constexpr int kMaxPrecision = 512;

// One placeholder, read from behind its "%".
struct Placeholder {
  bool left = false, plus = false, blank = false, zero = false, alternative = false;
  int width = 0;
  int precision = -1;  // -1: none given
  wchar_t conversion = 0;
  std::size_t length = 0;  // characters behind the "%"; 0: not a placeholder of ours
  bool withinLimits = true;
};

bool setFlag(Placeholder& placeholder, wchar_t c) {
  switch (c) {
    case L'-':
      return placeholder.left = true;
    case L'+':
      return placeholder.plus = true;
    case L' ':
      return placeholder.blank = true;
    case L'0':
      return placeholder.zero = true;
    case L'#':
      return placeholder.alternative = true;
    default:
      return false;
  }
}

// Decimal digits from `at` on; a number beyond `most` is most + 1.
int readCount(std::wstring_view pattern, std::size_t& at, int most) {
  int value = 0;
  for (; at < pattern.size() && pattern[at] >= L'0' && pattern[at] <= L'9'; ++at) {
    value = std::min(value * 10 + static_cast<int>(pattern[at] - L'0'), most + 1);
  }
  return value;
}

Placeholder readPlaceholder(std::wstring_view rest) {
  Placeholder read;
  std::size_t at = 0;
  while (at < rest.size() && setFlag(read, rest[at])) ++at;
  read.width = readCount(rest, at, kMaxWidth);
  if (at < rest.size() && rest[at] == L'.') read.precision = readCount(rest, ++at, kMaxPrecision);
  const bool isLong = rest.substr(at).starts_with(L"ll");
  if (isLong) at += 2;
  constexpr std::wstring_view kConversions = L"diuscfegxX";
  if (at >= rest.size() || kConversions.find(rest[at]) == kConversions.npos) return read;
  if (isLong && rest[at] != L'd' && rest[at] != L'i') return read;
  read.conversion = rest[at];
  read.length = at + 1;
  read.withinLimits = read.width <= kMaxWidth && read.precision <= kMaxPrecision;
  return read;
}

// Appends what stands before the number (sign, "0x"), the number and the blanks or zeros that fill the width.
void putNumber(std::wstring& to, const Placeholder& form, std::string_view before, std::size_t zeros,
               std::string_view digits) {
  const std::size_t size = before.size() + zeros + digits.size();
  const auto width = static_cast<std::size_t>(form.width);
  const std::size_t fill = width > size ? width - size : 0;
  const bool zeroFill = form.zero && !form.left;
  if (!zeroFill && !form.left) to.append(fill, L' ');
  to.append(before.begin(), before.end());
  to.append(zeros + (zeroFill ? fill : 0), L'0');
  to.append(digits.begin(), digits.end());
  if (form.left) to.append(fill, L' ');
}

std::string_view signOf(const Placeholder& form, bool negative) {
  return negative ? "-" : form.plus ? "+" : form.blank ? " " : "";
}

void putInteger(std::wstring& to, Placeholder form, long long value) {
  std::array<char, 32> buffer{};
  char* const first = buffer.data();
  char* end = nullptr;
  std::string_view before;
  if (form.conversion == L'd' || form.conversion == L'i') {
    before = signOf(form, value < 0);
    const auto magnitude = value < 0 ? 0ULL - static_cast<unsigned long long>(value)  //
                                     : static_cast<unsigned long long>(value);
    end = std::to_chars(first, first + buffer.size(), magnitude).ptr;
  } else {
    // A negative number that fits 32 bits is an int's, and shows as an unsigned of that size.
    const auto bits = value < 0 && value >= INT32_MIN ? static_cast<std::uint32_t>(value)  //
                                                      : static_cast<unsigned long long>(value);
    const int base = form.conversion == L'u' ? 10 : 16;
    end = std::to_chars(first, first + buffer.size(), bits, base).ptr;
    if (form.conversion == L'X') {
      for (char* c = first; c != end; ++c) *c = *c >= 'a' ? static_cast<char>(*c - 'a' + 'A') : *c;
    }
    if (base == 16 && form.alternative && bits != 0) before = form.conversion == L'X' ? "0X" : "0x";
  }
  std::string_view digits(first, static_cast<std::size_t>(end - first));
  std::size_t zeros = 0;
  if (form.precision >= 0) {
    form.zero = false;
    if (form.precision == 0 && value == 0) digits = {};
    const auto least = static_cast<std::size_t>(form.precision);
    zeros = least > digits.size() ? least - digits.size() : 0;
  }
  putNumber(to, form, before, zeros, digits);
}

using DoubleBuffer = std::array<char, 1024>;  // the largest double with the largest precision takes about 825

std::size_t writeDouble(DoubleBuffer& buffer, double value, std::chars_format form, int precision) {
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size() - 1, value, form, precision);
  return static_cast<std::size_t>(result.ptr - buffer.data());
}

// %#g keeps its closing zeros, which to_chars never writes: by the rounded exponent it is a %f or a %e.
std::size_t writeFullGeneral(DoubleBuffer& buffer, double value, int precision) {
  const int digits = std::max(precision, 1);
  const std::size_t length = writeDouble(buffer, value, std::chars_format::scientific, digits - 1);
  const std::string_view written(buffer.data(), length);
  const std::size_t mark = written.find('e') + 1;
  const std::size_t from = written[mark] == '+' ? mark + 1 : mark;
  int exponent = 0;
  std::from_chars(written.data() + from, written.data() + length, exponent);
  if (exponent < -4 || exponent >= digits) return length;
  return writeDouble(buffer, value, std::chars_format::fixed, digits - 1 - exponent);
}

void putDouble(std::wstring& to, Placeholder form, double value) {
  DoubleBuffer buffer;
  const int precision = form.precision < 0 ? 6 : form.precision;
  const double size = std::fabs(value);
  std::size_t length = 0;
  if (!std::isfinite(value)) {
    form.zero = form.alternative = false;
    length = writeDouble(buffer, size, std::chars_format::general, precision);
  } else if (form.conversion == L'f') {
    length = writeDouble(buffer, size, std::chars_format::fixed, precision);
  } else if (form.conversion == L'e') {
    length = writeDouble(buffer, size, std::chars_format::scientific, precision);
  } else if (form.alternative) {
    length = writeFullGeneral(buffer, size, precision);
  } else {
    length = writeDouble(buffer, size, std::chars_format::general, precision);
  }
  const std::string_view written(buffer.data(), length);
  if (form.alternative && written.find('.') == written.npos) {
    char* const at = buffer.data() + std::min(written.find('e'), length);
    std::copy_backward(at, buffer.data() + length, buffer.data() + length + 1);
    *at = '.';
    ++length;
  }
  putNumber(to, form, signOf(form, std::signbit(value)), 0, {buffer.data(), length});
}

void putText(std::wstring& to, const Placeholder& form, std::wstring_view value) {
  if (form.precision >= 0) value = cut(value, static_cast<std::size_t>(form.precision));
  const auto width = static_cast<std::size_t>(form.width);
  const std::size_t size = width == 0 ? 0 : units(value);
  const std::size_t fill = width > size ? width - size : 0;
  if (!form.left) to.append(fill, L' ');
  to.append(value);
  if (form.left) to.append(fill, L' ');
}

// A character may come as a number, as in C; numbers that are no character don't fit.
bool putCharacter(std::wstring& to, Placeholder form, const Arg::Value& value) {
  form.precision = -1;
  if (const auto* c = std::get_if<wchar_t>(&value)) {
    putText(to, form, {c, 1});
    return true;
  }
  const auto* code = std::get_if<long long>(&value);
  if (!code || *code <= 0 || *code > kLastCodePoint || isSurrogate(static_cast<char32_t>(*code))) return false;
  std::wstring text;
  appendCodePoint(text, static_cast<char32_t>(*code));
  putText(to, form, text);
  return true;
}

// False when the argument's kind is another one.
bool put(std::wstring& to, const Placeholder& form, const Arg::Value& value) {
  switch (form.conversion) {
    case L's':
      if (const auto* text = std::get_if<std::wstring_view>(&value)) return putText(to, form, *text), true;
      return false;
    case L'c':
      return putCharacter(to, form, value);
    case L'f':
    case L'e':
    case L'g':
      if (const auto* number = std::get_if<double>(&value)) return putDouble(to, form, *number), true;
      return false;
    default:
      if (const auto* number = std::get_if<long long>(&value)) return putInteger(to, form, *number), true;
      return false;
  }
}

}  // namespace

std::wstring formatList(std::wstring_view pattern, std::span<const Arg> args) {
  std::wstring result;
  std::size_t expected = pattern.size() + 16;
  for (const Arg& arg : args) {
    if (const auto* text = std::get_if<std::wstring_view>(&arg.value())) expected += text->size();
  }
  result.reserve(expected);
  std::size_t used = 0;
  while (!pattern.empty()) {
    const std::size_t mark = pattern.find(L'%');
    result.append(pattern.substr(0, mark));
    if (mark == pattern.npos) break;
    pattern.remove_prefix(mark + 1);
    if (pattern.starts_with(L'%')) {
      result += L'%';
      pattern.remove_prefix(1);
      continue;
    }
    const Placeholder form = readPlaceholder(pattern);
    // A placeholder of ours takes its argument even where it then stays, so that those behind it keep theirs.
    const Arg* const arg = form.length > 0 && used < args.size() ? &args[used++] : nullptr;
    if (!arg || !form.withinLimits || !put(result, form, arg->value())) {
      result += L'%';
      result.append(pattern.substr(0, form.length));
    }
    pattern.remove_prefix(form.length);
  }
  return result;
}

}  // namespace text
