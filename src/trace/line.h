// The words that lines of a trace are made of: numbers, texts, records in round brackets, lists in square ones. What is
// written so is read back as it was.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace trace {

// A line that isn't what it should be; what() is for people.
class BadLine : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Puts words behind each other, with a blank between them.
class Line {
 public:
  // As it stands: "true", "mdl3". It holds no blank, quote or bracket.
  void word(std::string_view text);
  void number(std::int64_t value);
  void number(std::uint64_t value);
  // The shortest form that is read back as the same number; also "inf", "-inf", "nan".
  void number(double value);
  // In quotes, in UTF-8. "\" stands before quotes and "\"; "\n", "\r", "\t" are what they are elsewhere, "\xHH" is a
  // byte of control, or one that belongs to no letter, "\uHHHH" half of a pair of UTF-16 that stands alone.
  void text(std::wstring_view text);
  void bytes(std::string_view bytes);
  void open(char bracket);
  void close(char bracket);
  [[nodiscard]] const std::string& str() const { return text_; }

 private:
  void part();
  void quote(std::string_view utf8);
  std::string text_;
};

// Takes such words from the front; BadLine for whatever else stands there. The text outlives it.
class Reading {
 public:
  explicit Reading(std::string_view text) : rest_(text) {}
  std::string_view word();
  std::int64_t integer();
  std::uint64_t natural();
  double real();
  std::wstring text();
  std::string bytes();
  void open(char bracket);
  void close(char bracket);
  // Is that what comes next?
  [[nodiscard]] bool at(char sign);
  // Nothing is left.
  [[nodiscard]] bool ends();
  // What is left.
  [[nodiscard]] std::string_view rest();

 private:
  void skip();
  void take(char sign);
  bool piece(std::string& letters, unsigned& half);
  unsigned number(std::size_t digits);
  std::string_view rest_;
};

}  // namespace trace
