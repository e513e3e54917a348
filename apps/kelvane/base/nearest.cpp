#include "kelvane/base/nearest.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "text/letters.h"

namespace kelvane {
namespace {

std::size_t edits(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before, last(b.size() + 1), now(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    now[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      now[j] = std::min({last[j] + 1, now[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) now[j] = std::min(now[j], before[j - 2] + 1);
    }
    before = std::exchange(last, now);
  }
  return last[b.size()];
}

// Letters that two words share at their start: people cut words short more often than they begin them wrong.
std::size_t sharedStart(std::string_view a, std::string_view b) {
  return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

}  // namespace

std::string nearest(std::string_view wrong, std::span<const std::string> known) {
  const std::string lower = text::lower(wrong);
  std::size_t most = std::max<std::size_t>(1, wrong.size() / 3);
  std::size_t mostShared = 0;
  std::string best;
  for (const std::string& word : known) {
    const std::size_t longer = std::max(word.size(), wrong.size());
    if (longer - std::min(word.size(), wrong.size()) > most) continue;
    const std::string lowerWord = text::lower(word);
    const std::size_t distance = edits(lower, lowerWord);
    const std::size_t shared = sharedStart(lower, lowerWord);
    if (distance < most || (distance == most && (best.empty() || shared > mostShared))) {
      most = distance;
      mostShared = shared;
      best = word;
    }
  }
  return best;
}

std::string nearestAlone(std::string_view wrong, std::span<const std::string> known, std::size_t most) {
  std::string best = nearest(wrong, known);
  if (best.empty()) return best;
  const std::string lower = text::lower(wrong);
  const auto distance = [&lower](const std::string& word) { return edits(lower, text::lower(word)); };
  const std::size_t least = distance(best);
  const bool isAlone = std::none_of(known.begin(), known.end(),
                                    [&](const std::string& word) { return word != best && distance(word) <= least; });
  return isAlone && least <= most ? best : std::string();
}

std::string didYouMean(std::string_view wrong, std::span<const std::string> known) {
  const std::string best = nearest(wrong, known);
  return best.empty() ? "" : "; did you mean '" + best + "'?";
}

}  // namespace kelvane
