// The comparison of texts with patterns: a line with the pattern, the text, and for replacements a third line.
#include "fuzz/target.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "text/encoding.h"
#include "text/letters.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::bytesOf(data, size);
  const std::wstring pattern = text::fromUtf8(fuzz::nextLine(rest)), subject = text::fromUtf8(fuzz::nextLine(rest)),
                     by = text::fromUtf8(rest);
  const int answer = language::wildcardCompare(pattern, subject);
  fuzz::holds(answer >= -2 && answer <= 1, "one of the four answers");
  fuzz::holds(language::wildcardCompare(pattern, subject) == answer, "the same answer from a kept pattern");
  const bool isPlain = pattern.find(L'*') == pattern.npos && !pattern.starts_with(L'/');
  if (isPlain) fuzz::holds((answer == 1) == text::equalNoCase(pattern, subject), "a plain text equals itself alone");
  constexpr std::size_t kShort = 200;  // a replacement tries every piece of the text
  if (subject.size() <= kShort && by.size() <= kShort) {
    const std::wstring replaced = language::patternReplace(subject, pattern, by);
    fuzz::holds(answer >= 0 || replaced == subject || answer == -2, "what doesn't compile replaces nothing");
    if (by.empty()) fuzz::holds(replaced.size() <= subject.size(), "what is taken out leaves less");
  }
  (void)language::takeRefused();
  language::forgetWhatWasGivenUp();
  return 0;
}
