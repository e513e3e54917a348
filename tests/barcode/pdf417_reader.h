// Reads the codewords of a PDF417 code back into its text, as a scanner does behind the correction of errors.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace test {

class CodewordReader {
 public:
  explicit CodewordReader(std::vector<int> codewords) : codewords_(std::move(codewords)) {}

  std::string text() {
    while (place_ < codewords_.size()) {
      const int latch = codewords_[place_];
      if (latch < 900 || latch == 913) {
        readText();  // the state in which a code begins
        continue;
      }
      ++place_;
      if (latch == 901 || latch == 924) readBytes(latch == 924);
      if (latch == 902) readDigits();
      if (latch == 900) readText();
    }
    return text_;
  }

 private:
  static constexpr const char* kUpper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ ";
  static constexpr const char* kLower = "abcdefghijklmnopqrstuvwxyz ";
  static constexpr std::string_view kMixed = "0123456789&\r\t,:#-.$/+%*=^";
  static constexpr std::string_view kPunctuation = ";<>@[\\]_`~!\r\t,:\n-.$/\"|*()?{}'";

  // The codewords up to the next latch.
  std::vector<int> run() {
    std::vector<int> all;
    while (place_ < codewords_.size() && codewords_[place_] < 900) all.push_back(codewords_[place_++]);
    return all;
  }
  void readText() {
    submode_ = 'A';
    shift_ = 0;
    for (; place_ < codewords_.size(); ++place_) {
      if (codewords_[place_] == 913) {
        text_ += static_cast<char>(codewords_[++place_]);
        shift_ = 0;  // what stood before was there to fill up a codeword
        continue;
      }
      if (codewords_[place_] >= 900) return;
      value(codewords_[place_] / 30);
      value(codewords_[place_] % 30);
    }
  }
  void value(int v) {
    const char mode = shift_ ? shift_ : submode_;
    shift_ = 0;
    const auto index = static_cast<std::size_t>(v);
    if (mode == 'P') {
      if (v == 29)
        submode_ = 'A';
      else
        text_ += kPunctuation[index];
    } else if (v == 29) {
      shift_ = 'P';
    } else if (mode == 'M') {
      if (v < 25) text_ += kMixed[index];
      if (v == 26) text_ += ' ';
      if (v == 25 || v > 26) submode_ = v == 25 ? 'P' : v == 27 ? 'L' : 'A';
    } else if (v < 27) {
      text_ += (mode == 'A' ? kUpper : kLower)[index];
    } else if (v == 28) {
      submode_ = 'M';
    } else if (mode == 'A') {
      submode_ = 'L';
    } else {
      shift_ = 'A';
    }
  }
  void readBytes(bool onlyGroups) {
    const std::vector<int> all = run();
    std::size_t i = 0;
    for (; i + 5 <= all.size() && (onlyGroups || i + 5 < all.size()); i += 5) {
      long long number = 0;
      for (std::size_t k = i; k < i + 5; ++k) number = number * 900 + all[k];
      std::string six(6, ' ');
      for (auto c = six.rbegin(); c != six.rend(); ++c, number /= 256) *c = static_cast<char>(number % 256);
      text_ += six;
    }
    for (; i < all.size(); ++i) text_ += static_cast<char>(all[i]);
  }
  void readDigits() {
    const std::vector<int> all = run();
    for (std::size_t i = 0; i < all.size(); i += 15) {
      std::string number = "0";  // decimal, its last digit first
      for (std::size_t k = i; k < all.size() && k < i + 15; ++k) {
        int carry = all[k];
        for (char& digit : number) {
          carry += (digit - '0') * 900;
          digit = static_cast<char>('0' + carry % 10);
          carry /= 10;
        }
        for (; carry > 0; carry /= 10) number += static_cast<char>('0' + carry % 10);
      }
      number.pop_back();  // the 1 that is put before the digits
      text_.append(number.rbegin(), number.rend());
    }
  }

  std::vector<int> codewords_;
  std::size_t place_ = 0;
  std::string text_;
  char submode_ = 'A', shift_ = 0;
};

}  // namespace test
