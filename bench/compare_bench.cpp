// One comparison of a text of 30 characters with a pattern that was used before, beside RE2 and fnmatch.
#include <benchmark/benchmark.h>

#include <fnmatch.h>
#include <re2/re2.h>

#include "language/compare.h"

namespace {

constexpr std::wstring_view kText = L"4711-GEHAEUSE_OBERTEIL_V02.PRT";
const std::string kBytes = "4711-GEHAEUSE_OBERTEIL_V02.PRT";
static_assert(kText.size() == 30);

void compare(benchmark::State& state, std::wstring_view pattern, std::wstring_view text) {
  if (language::wildcardCompare(pattern, text) != 1) state.SkipWithError("no match");
  for (auto _ : state) benchmark::DoNotOptimize(language::wildcardCompare(pattern, text));
}
BENCHMARK_CAPTURE(compare, plain, L"4711-gehaeuse_oberteil_v02.prt", kText);
BENCHMARK_CAPTURE(compare, wildcard, L"4711-*oberteil*.prt", kText);
BENCHMARK_CAPTURE(compare, expression, L"/^\\d{4}-[A-Z_]+\\d+\\.PRT$/", kText);
// Of so many repeats the steps must be counted: no machine code.
BENCHMARK_CAPTURE(compare, manyRepeats, L"/^\\d+-\\w+_[A-Z]+_V\\d+\\.P.*$/", kText);
BENCHMARK_CAPTURE(compare, caseBlindExpression, L"/(?i)^\\d{4}-.*oberteil.*\\.prt$/", kText);
BENCHMARK_CAPTURE(compare, caseBlindUmlauts, L"/(?i)^\\d{4}-.*gehäuse.*\\.prt$/", L"4711-OBERTEIL_GEHÄUSE_V020.PRT");

void re2(benchmark::State& state, const char* expression) {
  const RE2 compiled(expression);
  if (!RE2::PartialMatch(kBytes, compiled)) state.SkipWithError("no match");
  for (auto _ : state) benchmark::DoNotOptimize(RE2::PartialMatch(kBytes, compiled));
}
BENCHMARK_CAPTURE(re2, wildcard, "^(?i)4711-.*oberteil.*\\.prt$");
BENCHMARK_CAPTURE(re2, expression, "^\\d{4}-[A-Z_]+\\d+\\.PRT$");

void withFnmatch(benchmark::State& state) {
  if (fnmatch("4711-*oberteil*.prt", kBytes.c_str(), FNM_CASEFOLD) != 0) state.SkipWithError("no match");
  for (auto _ : state) benchmark::DoNotOptimize(fnmatch("4711-*oberteil*.prt", kBytes.c_str(), FNM_CASEFOLD));
}
BENCHMARK(withFnmatch);

// Growing texts: the time per character should stay what it is.
void longTexts(benchmark::State& state) {
  const std::wstring text(static_cast<std::size_t>(state.range(0)), L'a');
  for (auto _ : state) benchmark::DoNotOptimize(language::wildcardCompare(L"*a*a*b", text));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(longTexts)->RangeMultiplier(8)->Range(128, 65536)->Complexity(benchmark::oN);

void replaceInLongTexts(benchmark::State& state, std::wstring_view pattern) {
  std::wstring text;
  while (text.size() < static_cast<std::size_t>(state.range(0))) text += L"ab12 ";
  for (auto _ : state) benchmark::DoNotOptimize(language::patternReplace(text, pattern, L"x"));
  state.SetComplexityN(state.range(0));
}
BENCHMARK_CAPTURE(replaceInLongTexts, plain, L"b1")->RangeMultiplier(8)->Range(128, 65536)->Complexity(benchmark::oN);
BENCHMARK_CAPTURE(replaceInLongTexts, wildcard, L"a*c")
    ->RangeMultiplier(8)
    ->Range(128, 65536)
    ->Complexity(benchmark::oN);
BENCHMARK_CAPTURE(replaceInLongTexts, expression, L"/^\\d+$/")->RangeMultiplier(8)->Range(128, 8192)->Complexity();

}  // namespace
