#include "headless/store/line_match.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace headless {
namespace {

using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

struct Range {
  std::size_t begin, end;
  [[nodiscard]] std::size_t size() const { return end - begin; }
};

class Matcher {
 public:
  Matcher(const std::vector<std::string_view>& before, const std::vector<std::string_view>& after)
      : before_(numbers(before)), after_(numbers(after)), seen_(ids_.size()) {}

  Pairs run() {
    match({0, before_.size()}, {0, after_.size()}, kDepth);
    return std::move(pairs_);
  }

 private:
  static constexpr int kDepth = 40;                  // of ranges between lines that stand once
  static constexpr std::size_t kSmall = 256 * 1024;  // pairs of lines that are all looked at

  // Equal lines have one number.
  std::vector<std::size_t> numbers(const std::vector<std::string_view>& lines) {
    std::vector<std::size_t> all;
    all.reserve(lines.size());
    for (const std::string_view line : lines) all.push_back(ids_.try_emplace(line, ids_.size()).first->second);
    return all;
  }

  void match(Range a, Range b, int depth) {
    while (a.size() > 0 && b.size() > 0 && before_[a.begin] == after_[b.begin])
      pairs_.emplace_back(a.begin++, b.begin++);
    std::size_t same = 0;
    while (a.size() > 0 && b.size() > 0 && before_[a.end - 1] == after_[b.end - 1]) {
      --a.end;
      --b.end;
      ++same;
    }
    if (a.size() > 0 && b.size() > 0) matchInner(a, b, depth);
    for (std::size_t i = 0; i < same; ++i) pairs_.emplace_back(a.end + i, b.end + i);
  }

  void matchInner(Range a, Range b, int depth) {
    const Pairs anchors = depth > 0 ? longestRising(standingOnce(a, b)) : Pairs();
    if (anchors.empty()) {
      if (a.size() <= kSmall / b.size()) matchAll(a, b);
      return;
    }
    for (const auto& [inA, inB] : anchors) {
      match({a.begin, inA}, {b.begin, inB}, depth - 1);
      pairs_.emplace_back(inA, inB);
      a.begin = inA + 1;
      b.begin = inB + 1;
    }
    match(a, b, depth - 1);
  }

  // How often a line stands in the two ranges, and where.
  struct Seen {
    std::uint32_t inA = 0, inB = 0;
    std::size_t at = 0;
  };
  // Lines that stand once in each range, in the order of the second.
  Pairs standingOnce(Range a, Range b) {
    for (std::size_t i = a.begin; i < a.end; ++i) {
      ++seen_[before_[i]].inA;
      seen_[before_[i]].at = i;
    }
    for (std::size_t i = b.begin; i < b.end; ++i) ++seen_[after_[i]].inB;
    Pairs once;
    for (std::size_t i = b.begin; i < b.end; ++i)
      if (const Seen& seen = seen_[after_[i]]; seen.inA == 1 && seen.inB == 1) once.emplace_back(seen.at, i);
    for (std::size_t i = a.begin; i < a.end; ++i) seen_[before_[i]] = {};
    for (std::size_t i = b.begin; i < b.end; ++i) seen_[after_[i]] = {};
    return once;
  }

  // The longest run of pairs that rises in both places; they rise in the second already.
  static Pairs longestRising(const Pairs& pairs) {
    std::vector<std::size_t> tops, previous(pairs.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      const auto pile = std::lower_bound(tops.begin(), tops.end(), pairs[i].first,
                                         [&](std::size_t top, std::size_t first) { return pairs[top].first < first; });
      previous[i] = pile == tops.begin() ? i : *(pile - 1);
      if (pile == tops.end())
        tops.push_back(i);
      else
        *pile = i;
    }
    Pairs rising(tops.size());
    for (std::size_t left = tops.size(), at = tops.empty() ? 0 : tops.back(); left > 0; at = previous[at])
      rising[--left] = pairs[at];
    return rising;
  }

  // The longest common run of lines, by all pairs of them.
  void matchAll(Range a, Range b) {
    const std::size_t width = b.size() + 1;
    std::vector<std::uint32_t> longest((a.size() + 1) * width);
    for (std::size_t i = a.size(); i-- > 0;)
      for (std::size_t j = b.size(); j-- > 0;)
        longest[i * width + j] = before_[a.begin + i] == after_[b.begin + j]
                                     ? longest[(i + 1) * width + j + 1] + 1
                                     : std::max(longest[(i + 1) * width + j], longest[i * width + j + 1]);
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
      if (before_[a.begin + i] == after_[b.begin + j])
        pairs_.emplace_back(a.begin + i++, b.begin + j++);
      else if (longest[(i + 1) * width + j] >= longest[i * width + j + 1])
        ++i;
      else
        ++j;
    }
  }

  std::unordered_map<std::string_view, std::size_t> ids_;
  std::vector<std::size_t> before_, after_;
  std::vector<Seen> seen_;
  Pairs pairs_;
};

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> matchedLines(const std::vector<std::string_view>& before,
                                                              const std::vector<std::string_view>& after) {
  return Matcher(before, after).run();
}

}  // namespace headless
