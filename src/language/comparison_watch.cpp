#include "language/comparison_watch.h"

#include <algorithm>
#include <set>

#include "core/log.h"
#include "language/expressions.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/units.h"

namespace language {
namespace {

// A filter over a large model compares without end; what is noted of it is for a person to read.
constexpr std::size_t kMostNoted = 1000;
constexpr std::size_t kMostRefused = 100;
constexpr std::size_t kShownOfPattern = 200, kShownOfText = 60;

std::size_t givenUpCount = 0;

std::set<std::wstring, std::less<>>& toldPatterns() {
  static std::set<std::wstring, std::less<>> patterns;
  return patterns;
}

std::vector<RefusedExpression>& refused() {
  static std::vector<RefusedExpression> all;
  return all;
}

std::wstring beginning(std::wstring_view text, std::size_t length) {
  const std::wstring_view shown = text::cut(text, length);
  return std::wstring(shown) + (shown.size() < text.size() ? L"..." : L"");
}

}  // namespace

void noteGivenUp(std::wstring_view pattern, std::wstring_view text) {
  ++givenUpCount;
  if (!toldPatterns().emplace(pattern).second) return;
  core::logWrite(text::format(L"The pattern '%s' was given up on the text '%s': it takes too many steps",
                              beginning(pattern, kShownOfPattern), beginning(text, kShownOfText)),
                 core::kError);
}

void forgetWhatWasGivenUp() { toldPatterns().clear(); }

GivenUp::GivenUp() : before_(givenUpCount) {}
bool GivenUp::any() const { return givenUpCount != before_; }

void noteRefused(std::wstring_view pattern) {
  std::vector<RefusedExpression>& all = refused();
  const auto isIt = [pattern](const RefusedExpression& expression) { return expression.pattern == pattern; };
  if (all.size() < kMostRefused && std::none_of(all.begin(), all.end(), isIt))
    all.push_back({std::wstring(pattern), text::toUtf8(expressionFault(pattern).what)});
}

std::vector<RefusedExpression> takeRefused() { return std::exchange(refused(), {}); }

ComparisonWatch* ComparisonWatch::current_ = nullptr;
ComparisonWatch::ComparisonWatch() : outer_(std::exchange(current_, this)) {}
ComparisonWatch::~ComparisonWatch() { current_ = outer_; }
void ComparisonWatch::note(std::wstring_view pattern, std::wstring_view text, Compared result) {
  if (on() && current_->noted_.size() < kMostNoted)
    current_->noted_.push_back({std::wstring(pattern), std::wstring(text), result});
}

}  // namespace language
