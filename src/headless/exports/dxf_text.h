// The text of an exchange drawing, pair by pair: a number that says what follows, and a value.
#pragma once

#include <cmath>
#include <string>
#include <string_view>

#include "text/encoding.h"
#include "text/numbers.h"

namespace headless {

class DxfText {
 public:
  void pair(int code, std::string_view value) {
    out_ += std::to_string(code);
    out_ += '\n';
    out_ += value;
    out_ += '\n';
  }
  void whole(int code, int value) { pair(code, std::to_string(value)); }
  // Six decimals; what isn't finite is 0.
  void number(int code, double value) {
    const double rounded = std::isfinite(value) ? std::round(value * 1e6) / 1e6 : 0;
    std::string digits = text::toUtf8(text::shortest(rounded == 0 ? 0.0 : rounded));
    if (digits.find_first_of(".e") == digits.npos) digits += ".0";
    pair(code, digits);
  }
  void point(int code, double x, double y) {
    number(code, x);
    number(code + 10, y);
  }
  // By it an object is named by others.
  void handle(int code, int value) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string digits;
    for (unsigned left = static_cast<unsigned>(value); left > 0 || digits.empty(); left /= 16)
      digits.insert(digits.begin(), kDigits[left % 16]);
    pair(code, digits);
  }
  void section(std::string_view name) {
    pair(0, "SECTION");
    pair(2, name);
  }
  void add(const DxfText& more) { out_ += more.out_; }
  std::string taken() { return std::move(out_); }

 private:
  std::string out_;
};

}  // namespace headless
