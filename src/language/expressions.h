// PCRE2 expressions, compiled once and matched within limits.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "text/fault.h"

struct pcre2_real_code_8;

namespace language {

// unfinished: the match was given up, beyond the limits of steps, depth or memory; whether there is one isn't known.
enum class Answer { none, match, unfinished };

// What matches that belong together may cost, as the tries of one replacement: about what one match may.
class Effort {
 public:
  // Takes steps of a run over so many bytes, each of which can go over all of them; false where that is too much.
  bool take(std::size_t steps, std::size_t bytes);
  // Takes steps of machine code that nobody counts; false where that is too much, and such code isn't to be used.
  bool takeUncounted(std::size_t steps);
  void giveUp() { work_ = -1; }
  [[nodiscard]] bool givenUp() const { return work_ < 0; }

 private:
  std::int64_t work_ = 4'000'000'000;  // steps, times the bytes that each may go over
  std::int64_t uncounted_ = 1'000'000'000;
};

struct FreeCode {
  void operator()(pcre2_real_code_8* code) const;
};
using CompiledCode = std::unique_ptr<pcre2_real_code_8, FreeCode>;

// An expression on UTF-8 bytes, compiled without options.
class Expression {
 public:
  explicit Expression(std::string_view expression);
  [[nodiscard]] bool compiled() const { return code_.value != nullptr; }
  // Why it isn't compiled, in the library's words.
  [[nodiscard]] const text::Fault& fault() const { return code_.fault; }
  // From position 0, unanchored. A match that sets a group beyond the 80th doesn't count.
  [[nodiscard]] Answer match(std::string_view text) const;
  // The same with what is left of an effort, which is given up where the match is.
  [[nodiscard]] Answer match(std::string_view text, Effort& effort) const;
  // True when it can match at the very start of a text only.
  [[nodiscard]] bool anchored() const;
  // For an anchored expression and at least two bytes: true when neither this text nor any longer one that starts with
  // it can match. False where that isn't sure.
  [[nodiscard]] bool refusesAllThatStartWith(std::string_view text, Effort& effort) const;

 private:
  [[nodiscard]] std::optional<std::size_t> uncountedSteps(std::size_t length) const;
  [[nodiscard]] int inMachineCode(std::string_view text, std::size_t steps) const;
  [[nodiscard]] int execute(std::string_view text) const;
  [[nodiscard]] int counted(std::string_view text, std::uint32_t options, std::size_t mostSteps, Effort& effort) const;

  std::size_t repeats_;  // of single characters
  std::size_t alternatives_;
  bool hidesSteps_;     // more than these tell
  bool repeatsGroups_;  // without an end
  text::Result<CompiledCode> code_;
  bool isUtf_ = false;
};

// A byte of UTF-8 in lower case: ASCII letters, and the second bytes of "Ä", "Ö", "Ü" behind their first one.
char foldedByte(char c, char before);
// "Ä" to "ä", "Ö" to "ö", "Ü" to "ü" in UTF-8: in an expression that is case-blind, and in its texts.
void foldUmlauts(std::string& text);
bool isCaseBlind(std::string_view expression);

// What a user wrote between slashes, compiled: with "(?i)" in it umlauts are folded, here and by the caller in the
// text.
struct UserExpression {
  explicit UserExpression(std::string between);
  bool foldsText;
  Expression code;
};

// Keeps what was made from a text, up to a number of entries; then it starts over. A result lives until the next get.
template <class Char, class Value>
class PatternCache {
 public:
  template <class Make>
  const Value& get(std::basic_string_view<Char> key, Make make) {
    auto found = kept_.find(key);
    if (found == kept_.end()) {
      if (kept_.size() >= kMost) kept_.clear();
      found = kept_.try_emplace(std::basic_string<Char>(key), make(key)).first;
    }
    return found->second;
  }

 private:
  static constexpr std::size_t kMost = 512;
  struct Hash : std::hash<std::basic_string_view<Char>> {
    using is_transparent = void;
  };
  std::unordered_map<std::basic_string<Char>, Value, Hash, std::equal_to<>> kept_;
};

// The compiled form of a pattern in slashes, the slashes included; null when nothing stands between them or PCRE2
// refuses it. Valid until the next call.
const UserExpression* keptExpression(std::wstring_view pattern);
// Why a pattern in slashes is no expression. None: it is one, or the pattern has another form.
text::Fault expressionFault(std::wstring_view pattern);

// Replaces buffer by text in UTF-8; no memory is taken once the buffer has grown.
void narrowInto(std::string& buffer, std::wstring_view text);

}  // namespace language
