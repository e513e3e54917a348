// PCRE expressions, compiled once and matched within limits.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

struct real_pcre;
struct pcre_extra;

namespace engine {

// unfinished: the expression backtracked beyond the limits. Callers take it for no match.
enum class Answer { none, match, unfinished };

// An expression on UTF-8 bytes, compiled without options.
class Expression {
 public:
  explicit Expression(const std::string& expression);
  [[nodiscard]] bool compiled() const { return code_ != nullptr; }
  // From position 0, unanchored. A match that sets a group beyond the 80th doesn't count.
  [[nodiscard]] Answer match(std::string_view text) const;
  // True when it can match at the very start of a text only.
  [[nodiscard]] bool anchored() const;
  // For an anchored expression and at least two bytes: true when neither this text nor any longer one that starts with
  // it can match. False where that isn't sure.
  [[nodiscard]] bool refusesAllThatStartWith(std::string_view text) const;

 private:
  int execute(std::string_view text, int options) const;

  std::size_t repeats_;  // how many repeats of single characters it has
  std::unique_ptr<real_pcre, void (*)(real_pcre*)> code_;
  std::unique_ptr<pcre_extra, void (*)(pcre_extra*)> extra_;
};

// "Ä" to "ä", "Ö" to "ö", "Ü" to "ü" in the bytes of an expression that is case-blind, and in its texts.
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

// The compiled form of a pattern in slashes, the slashes included; null when nothing stands between them or PCRE
// refuses it. Valid until the next call.
const UserExpression* keptExpression(std::wstring_view pattern);

// Replaces buffer by text in UTF-8; no memory is taken once the buffer has grown.
void narrowInto(std::string& buffer, std::wstring_view text);

}  // namespace engine
