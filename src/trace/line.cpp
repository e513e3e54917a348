#include "trace/line.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "text/encoding.h"

namespace trace {
namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

bool isHalf(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }
bool isUpperHalf(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

// How many units from the front are letters: on a system of 16 bits a pair is one.
std::size_t lettersBefore(std::wstring_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!isHalf(text[i])) continue;
    const bool isPair = sizeof(wchar_t) == 2 && isUpperHalf(text[i]) && i + 1 < text.size() && isHalf(text[i + 1]) &&
                        !isUpperHalf(text[i + 1]);
    if (!isPair) return i;
    ++i;
  }
  return text.size();
}

void hex(std::string& out, unsigned value, int digits) {
  for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) out += kDigits[value >> shift & 0xF];
}

// The length of the UTF-8 letter at the front; 0: none begins there.
std::size_t letter(std::string_view bytes) {
  for (std::size_t length = 1; length <= 4 && length <= bytes.size(); ++length)
    if (text::isUtf8(bytes.substr(0, length))) return length;
  return 0;
}

template <class Number>
Number parsed(std::string_view word, const char* what) {
  Number value{};
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size())
    throw BadLine(std::string(what) + " is expected, not '" + std::string(word) + "'");
  return value;
}

}  // namespace

// ---- writing

void Line::part() {
  if (!text_.empty() && text_.back() != '(' && text_.back() != '[') text_ += ' ';
}

void Line::word(std::string_view text) {
  part();
  text_ += text;
}

void Line::number(std::int64_t value) { word(std::to_string(value)); }
void Line::number(std::uint64_t value) { word(std::to_string(value)); }

void Line::number(double value) {
  if (std::isnan(value)) return word("nan");
  if (std::isinf(value)) return word(value < 0 ? "-inf" : "inf");
  char digits[32];
  const auto written = std::to_chars(std::begin(digits), std::end(digits), value);
  word({digits, static_cast<std::size_t>(written.ptr - digits)});
}

void Line::quote(std::string_view utf8) {
  while (!utf8.empty()) {
    const std::size_t length = letter(utf8);
    const char first = utf8.front();
    if (first == '"' || first == '\\') {
      text_ += '\\';
      text_ += first;
    } else if (first == '\n' || first == '\r' || first == '\t') {
      text_ += first == '\n' ? "\\n" : first == '\r' ? "\\r" : "\\t";
    } else if (length == 0 || (length == 1 && (first < ' ' || first == '\x7F'))) {
      text_ += "\\x";
      hex(text_, static_cast<unsigned char>(first), 2);
    } else {
      text_ += utf8.substr(0, length);
    }
    utf8.remove_prefix(length == 0 ? 1 : length);
  }
}

void Line::bytes(std::string_view bytes) {
  part();
  text_ += '"';
  quote(bytes);
  text_ += '"';
}

void Line::text(std::wstring_view text) {
  part();
  text_ += '"';
  while (!text.empty()) {
    const std::size_t whole = lettersBefore(text);
    quote(text::toUtf8(text.substr(0, whole)));
    text.remove_prefix(whole);
    if (text.empty()) break;
    text_ += "\\u";
    hex(text_, static_cast<unsigned>(text.front()), 4);
    text.remove_prefix(1);
  }
  text_ += '"';
}

void Line::open(char bracket) { word({&bracket, 1}); }
void Line::close(char bracket) { text_ += bracket; }

// ---- reading

void Reading::skip() {
  while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
}

bool Reading::at(char sign) {
  skip();
  return !rest_.empty() && rest_.front() == sign;
}

bool Reading::ends() {
  skip();
  return rest_.empty();
}

std::string_view Reading::rest() {
  skip();
  return rest_;
}

void Reading::take(char sign) {
  if (!at(sign)) throw BadLine(std::string("'") + sign + "' is expected before '" + std::string(rest_) + "'");
  rest_.remove_prefix(1);
}

void Reading::open(char bracket) { take(bracket); }
void Reading::close(char bracket) { take(bracket); }

std::string_view Reading::word() {
  skip();
  const std::size_t length = std::min(rest_.find_first_of(" ()[]\""), rest_.size());
  if (length == 0) throw BadLine("a word is expected before '" + std::string(rest_) + "'");
  const std::string_view word = rest_.substr(0, length);
  rest_.remove_prefix(length);
  return word;
}

std::int64_t Reading::integer() { return parsed<std::int64_t>(word(), "a number"); }
std::uint64_t Reading::natural() { return parsed<std::uint64_t>(word(), "a number from 0"); }
double Reading::real() { return parsed<double>(word(), "a number"); }

// The letters up to the closing quote, or to half of a pair: then that, and true.
bool Reading::piece(std::string& letters, unsigned& half) {
  while (!rest_.empty() && rest_.front() != '"') {
    const char sign = rest_.front();
    rest_.remove_prefix(1);
    if (sign != '\\' || rest_.empty()) {
      letters += sign;
      continue;
    }
    const char escaped = rest_.front();
    rest_.remove_prefix(1);
    if (escaped == 'u') {
      half = number(4);
      return true;
    }
    if (escaped == 'x')
      letters += static_cast<char>(number(2));
    else
      letters += escaped == 'n' ? '\n' : escaped == 'r' ? '\r' : escaped == 't' ? '\t' : escaped;
  }
  return false;
}

unsigned Reading::number(std::size_t digits) {
  const std::string_view word = rest_.substr(0, digits);
  unsigned value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, 16);
  if (word.size() < digits || error != std::errc() || end != word.data() + digits)
    throw BadLine("digits are expected before '" + std::string(rest_) + "'");
  rest_.remove_prefix(digits);
  return value;
}

std::wstring Reading::text() {
  take('"');
  std::wstring result;
  for (bool more = true; more;) {
    std::string letters;
    unsigned half = 0;
    more = piece(letters, half);
    result += text::fromUtf8(letters);
    if (more) result += static_cast<wchar_t>(half);
  }
  take('"');
  return result;
}

std::string Reading::bytes() {
  take('"');
  std::string result;
  unsigned half = 0;
  if (piece(result, half)) throw BadLine("bytes hold no half of a pair");
  take('"');
  return result;
}

}  // namespace trace
