#include "engine/expressions.h"

#include <pcre.h>

#include <algorithm>
#include <array>
#include <climits>

#include "engine/compare.h"
#include "text/encoding.h"

namespace engine {
namespace {

// Steps that a match may take: PCRE's own default, so that what a plain call decides is decided likewise. In a long
// text a single step can go over the whole of it, so that fewer are allowed.
constexpr std::size_t kMostSteps = 10'000'000;
constexpr std::size_t kMostStepsTimesLength = 20'000'000'000;
// Machine code doesn't count the steps back in repeats of single characters. It is used where these can't be more than
// this, each repeat and the start taking any place in the text; elsewhere PCRE's interpreter counts all of them.
constexpr std::size_t kMostUncountedSteps = 10'000'000;
// Of the interpreter, which takes about half a kilobyte of the stack a level; compiled code has a stack of its own.
constexpr unsigned long kRecursionLimit = 6000;
constexpr int kFirstJitStack = 32 * 1024;
constexpr int kLargestJitStack = 16 * 1024 * 1024;
constexpr int kOffsets = 243;

pcre_jit_stack* jitStack() {
  static const std::unique_ptr<pcre_jit_stack, void (*)(pcre_jit_stack*)> stack(
      pcre_jit_stack_alloc(kFirstJitStack, kLargestJitStack), [](pcre_jit_stack* s) { pcre_jit_stack_free(s); });
  return stack.get();
}

pcre* compile(const std::string& expression) {
  const char* reason = nullptr;
  int position = 0;
  return pcre_compile(expression.c_str(), 0, &reason, &position, nullptr);
}

pcre_extra* study(const pcre* code) {
  const char* reason = nullptr;
  pcre_extra* extra = pcre_study(code, PCRE_STUDY_JIT_COMPILE | PCRE_STUDY_EXTRA_NEEDED, &reason);
  if (!extra) return nullptr;
  extra->flags |= PCRE_EXTRA_MATCH_LIMIT | PCRE_EXTRA_MATCH_LIMIT_RECURSION;
  extra->match_limit_recursion = kRecursionLimit;
  pcre_assign_jit_stack(extra, nullptr, jitStack());
  return extra;
}

std::size_t countRepeats(std::string_view expression) {
  std::size_t count = 0;
  for (std::size_t i = 1; i < expression.size(); ++i)
    if (std::string_view("*+?{").find(expression[i]) != std::string_view::npos && expression[i - 1] != ')') ++count;
  return count;
}

bool fewUncountedSteps(std::size_t length, std::size_t repeats) {
  std::size_t steps = length + 1;
  for (; repeats > 0 && steps <= kMostUncountedSteps; --repeats) steps *= length + 1;
  return steps <= kMostUncountedSteps;
}

}  // namespace

Expression::Expression(const std::string& expression)
    : repeats_(countRepeats(expression)),
      code_(compile(expression), [](pcre* code) { pcre_free(code); }),
      extra_(code_ ? study(code_.get()) : nullptr, [](pcre_extra* extra) { pcre_free_study(extra); }) {
  if (!extra_) code_.reset();  // without it nothing would bound a match
}

int Expression::execute(std::string_view text, int options) const {
  if (text.size() > INT_MAX) return PCRE_ERROR_NOMATCH;
  pcre_extra extra = *extra_;
  extra.match_limit = std::min(kMostSteps, kMostStepsTimesLength / (text.size() + 1));
  std::array<int, kOffsets> offsets;
  const char* const at = text.data() ? text.data() : "";
  const int length = static_cast<int>(text.size());
  // Machine code is entered without the checks of a call that might be interpreted.
  if (options == 0 && fewUncountedSteps(text.size(), repeats_) && (extra.flags & PCRE_EXTRA_EXECUTABLE_JIT) != 0)
    return pcre_jit_exec(code_.get(), &extra, at, length, 0, 0, offsets.data(), kOffsets, jitStack());
  extra.flags &= ~static_cast<unsigned long>(PCRE_EXTRA_EXECUTABLE_JIT);
  return pcre_exec(code_.get(), &extra, at, length, 0, options, offsets.data(), kOffsets);
}

Answer Expression::match(std::string_view text) const {
  const int result = execute(text, 0);
  if (result > 0) return Answer::match;
  return result == 0 || result == PCRE_ERROR_NOMATCH ? Answer::none : Answer::unfinished;
}

bool Expression::anchored() const {
  unsigned long options = 0;
  return pcre_fullinfo(code_.get(), extra_.get(), PCRE_INFO_OPTIONS, &options) == 0 && (options & PCRE_ANCHORED) != 0;
}

bool Expression::refusesAllThatStartWith(std::string_view text) const {
  // With this option PCRE stops as soon as it looks at the text's end; "no match" then was found without its help, and
  // more text changes nothing. Only an end at the place where the match starts is looked at unnoticed.
  return text.size() >= 2 && execute(text, PCRE_PARTIAL_HARD) == PCRE_ERROR_NOMATCH;
}

bool isCaseBlind(std::string_view expression) { return expression.find("(?i)") != std::string_view::npos; }

namespace {
std::string folded(std::string text) {
  foldUmlauts(text);
  return text;
}
}  // namespace

UserExpression::UserExpression(std::string between)
    : foldsText(isCaseBlind(between)), code(foldsText ? folded(std::move(between)) : between) {}

const UserExpression* keptExpression(std::wstring_view pattern) {
  if (pattern.size() < 3) return nullptr;
  static PatternCache<wchar_t, UserExpression> cache;
  const UserExpression& kept = cache.get(
      pattern, [](std::wstring_view whole) { return UserExpression(text::toUtf8(whole.substr(1, whole.size() - 2))); });
  return kept.code.compiled() ? &kept : nullptr;
}

void narrowInto(std::string& buffer, std::wstring_view text) {
  const auto isAscii = [](wchar_t c) { return c < 0x80; };
  buffer.clear();
  for (auto at = text.begin(); at != text.end();) {
    auto end = at;
    for (; end != text.end() && isAscii(*end); ++end) buffer += static_cast<char>(*end);
    at = std::find_if(end, text.end(), isAscii);
    if (at != end) buffer += text::toUtf8(std::wstring_view(end, at));
  }
}

}  // namespace engine
