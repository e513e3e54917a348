// What finding a user variable among many costs: bench/README.md has the figures.
#include <benchmark/benchmark.h>

#include "language/variables.h"
#include "text/format.h"

namespace {

// The names are asked for in another case than the one in which they were set, in an order that no cache guesses.
void findAmong(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  language::UserVariableTable table;
  std::vector<std::wstring> asked;
  for (int i = 0; i < count; ++i) {
    table.set(text::format(L"Variable of the list %d", i), L"value");
    asked.push_back(text::format(L"VARIABLE OF THE LIST %d", i * 7919 % count));
  }
  std::size_t at = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(table.find(asked[at]));
    at = at + 1 == asked.size() ? 0 : at + 1;
  }
}
BENCHMARK(findAmong)->Arg(100)->Arg(10'000);

}  // namespace
