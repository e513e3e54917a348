// Renaming one model in a folder of many, whose assembly uses it.
#include <benchmark/benchmark.h>

#include "creo/ProMdl.h"
#include "creo/ProMdlCopy.h"
#include "site.h"

namespace {

void RenameModel(benchmark::State& state) {
  bench::Site site(static_cast<int>(state.range(0)), {});
  const auto part = creo::ProMdlRetrieve(L"PART_0", creo::ProMdlType::part);
  bool isAway = false;
  for (auto _ : state) {
    isAway = !isAway;
    creo::ProRenamed renamed;
    const auto result = creo::ProMdlnameRename(part.value, isAway ? L"AWAY" : L"PART_0", renamed);
    if (result == creo::ProNoError && renamed.followed.size() == 1) continue;
    state.SkipWithError("it isn't renamed, or the assembly doesn't follow");
    break;
  }
}
BENCHMARK(RenameModel)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
