#include "os/posix/command_line.h"

#include <algorithm>

#include "os/surroundings.h"
#include "text/encoding.h"

namespace os {
namespace {

bool isLetterOrDigit(wchar_t c) {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9');
}

// What a shell takes as it stands, also as a pattern for files.
bool isPlain(char c) {
  static constexpr std::string_view kPlain = "_./*?@%+=:,-";
  return isLetterOrDigit(static_cast<unsigned char>(c)) || kPlain.find(c) != kPlain.npos;
}

// A word outside quotes in which "*" and "?" keep their meaning.
std::string wordWithPatterns(std::string_view text) {
  std::string word;
  for (const char c : text) {
    if (isPlain(c))
      word += c;
    else
      word += shellWord({&c, 1});
  }
  return word;
}

class Translation {
 public:
  explicit Translation(std::wstring_view command) : command_(command) {}

  std::string run() {
    while (at_ < command_.size()) {
      if (beginsPath())
        takePath();
      else
        takeCharacter();
    }
    return result_ + text::toUtf8(plain_);
  }

 private:
  [[nodiscard]] wchar_t next(std::size_t ahead) const {
    return at_ + ahead < command_.size() ? command_[at_ + ahead] : L'\0';
  }
  [[nodiscard]] bool beginsPath() const {
    const bool inWord = at_ > 0 && isLetterOrDigit(command_[at_ - 1]);
    return !inWord && next(1) == L':' && (next(2) == L'\\' || next(2) == L'/') && mounts().has(command_[at_]);
  }

  void takePath() {
    static constexpr std::wstring_view kEnds = L" \t\r\n\"'|&;<>()`";
    const std::size_t end =
        std::min(quote_ == 0 ? command_.find_first_of(kEnds, at_) : command_.find(quote_, at_), command_.size());
    const std::string path = mounts().machine(command_.substr(at_, end - at_));
    flush();
    if (quote_ == 0) {
      result_ += wordWithPatterns(path);
    } else {
      const char quote = static_cast<char>(quote_);
      result_.append(1, quote).append(shellWord(path)).append(1, quote);
    }
    at_ = end;
  }

  void takeCharacter() {
    const wchar_t c = command_[at_++];
    const bool isQuote = c == L'"' || c == L'\'';
    if (c == L'\\' && next(0) == L'"') {
      plain_ += L"\\\"";
      ++at_;
    } else if (isQuote && (quote_ == 0 || quote_ == c)) {
      quote_ = quote_ == 0 ? c : L'\0';
      plain_ += c;
    } else {
      plain_ += c == L'\\' ? L'/' : c;
    }
  }

  void flush() {
    result_ += text::toUtf8(plain_);
    plain_.clear();
  }

  std::wstring_view command_;
  std::size_t at_ = 0;
  wchar_t quote_ = 0;
  std::wstring plain_;  // read, not yet in the result
  std::string result_;
};

}  // namespace

std::string shellCommand(std::wstring_view command) { return Translation(command).run(); }

std::string shellWord(std::string_view text) {
  std::string word = "'";
  for (const char c : text) {
    if (c == '\'')
      word += "'\\''";
    else
      word += c;
  }
  return word + "'";
}

}  // namespace os
