// What a run and the filling of the model table cost, over models in a folder on the memory disk: bench/README.md has
// the figures and what they are held against.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include "run/model_table.h"
#include "site.h"

namespace {

using bench::Site;

// One list of 20 cheap actions, one of none.
const std::map<std::string, bench::List>& lists() {
  static const std::map<std::string, bench::List> all = [] {
    const std::string action = R"(<task type="setUserVariableDirect" version="3" forPRT="true" forASM="true" )"
                               R"(forDRW="true" forEF="false" name="COUNT" inc="true" incno="1"/>)";
    std::string twenty;
    for (int i = 0; i < 20; ++i) twenty += action;
    return std::map<std::string, bench::List>{{"twenty.xml", {{}, twenty}}, {"none.xml", {}}};
  }();
  return all;
}

void runOver(benchmark::State& state, const std::string& list) {
  Site site(static_cast<int>(state.range(0)), lists());
  site.openTool();
  site.choose(list);
  for (auto _ : state) site.start();
  state.counters["us/model"] =
      benchmark::Counter(static_cast<double>(state.range(0)) / 1e6,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
void RunTwentyActions(benchmark::State& state) { runOver(state, "twenty.xml"); }
void RunNoAction(benchmark::State& state) { runOver(state, "none.xml"); }
BENCHMARK(RunTwentyActions)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(RunNoAction)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

// Opening the assembly and filling the table from it, models read from their documents.
void FillTable(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto site = std::make_unique<Site>(static_cast<int>(state.range(0)), lists());
    state.ResumeTiming();
    site->openTool();
    state.PauseTiming();
    site.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(FillTable)->Arg(500)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The table filled again, models in memory.
void RefillTable(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)), lists());
  site.openTool();
  for (auto _ : state) run::refreshModelTable();
}
BENCHMARK(RefillTable)->Arg(500)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);

// Memory after a run of twenty actions, beside the bytes of the documents.
void Memory(benchmark::State& state) {
  for (auto _ : state) {
    malloc_trim(0);
    const auto before = mallinfo2();
    Site site(static_cast<int>(state.range(0)), lists());
    site.openTool();
    site.choose("twenty.xml");
    site.start();
    const auto after = mallinfo2();
    state.counters["used_MB"] =
        static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / 1e6;
    state.counters["documents_MB"] = site.documents() / 1e6;
  }
}
BENCHMARK(Memory)->Arg(500)->Arg(5000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
