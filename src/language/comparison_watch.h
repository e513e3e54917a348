// What comparisons leave beside their answers: matches that were given up, expressions that were refused, and what was
// compared while somebody watched.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace language {

// ---- matches that were given up

// A comparison or a replacement came to no answer within its limits: an error line, once a run for each pattern.
void noteGivenUp(std::wstring_view pattern, std::wstring_view text);
// A run, or another log, begins: each pattern gets its line again.
void forgetWhatWasGivenUp();

// Whether anything was given up since the object was made. Who acts on "no match", by deleting or by letting a model
// pass, asks it: nothing is known then.
class GivenUp {
 public:
  GivenUp();
  [[nodiscard]] bool any() const;

 private:
  std::size_t before_;
};

// ---- expressions that were refused

// An expression that doesn't compile matches nothing, and the log stays silent; programs tell it.
struct RefusedExpression {
  std::wstring pattern;  // with its slashes
  std::string reason;
};
void noteRefused(std::wstring_view pattern);
// Those used since the last call, each once, the first hundred.
std::vector<RefusedExpression> takeRefused();

// ---- what was compared

enum class Compared { match, none, givenUp };
struct NotedComparison {
  std::wstring pattern, text;
  Compared result = Compared::none;
};
// Notes each wildcardCompare for as long as it lives; a watch inside another one notes in its place.
class ComparisonWatch {
 public:
  ComparisonWatch();
  ~ComparisonWatch();
  ComparisonWatch(const ComparisonWatch&) = delete;
  ComparisonWatch& operator=(const ComparisonWatch&) = delete;
  // What was noted since the last call.
  std::vector<NotedComparison> take() { return std::exchange(noted_, {}); }
  [[nodiscard]] static bool on() { return current_ != nullptr; }
  // Also for what is compared otherwise, such as numbers; nothing where nobody watches.
  static void note(std::wstring_view pattern, std::wstring_view text, Compared result);
  static void note(std::wstring_view pattern, std::wstring_view text, bool matched) {
    note(pattern, text, matched ? Compared::match : Compared::none);
  }

 private:
  static ComparisonWatch* current_;
  ComparisonWatch* outer_;
  std::vector<NotedComparison> noted_;
};

}  // namespace language
