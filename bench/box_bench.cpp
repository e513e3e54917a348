// The search for the smallest box of a part with many planes: bench/README.md has the figures.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

#include "actions/environment/bounding_box.h"
#include "creo/ProMdl.h"
#include "site.h"

namespace {

// A star of that many faces, its two ends among them: no two planes are turned the same way.
std::string star(int faces) {
  std::string profile;
  const int points = faces - 2;
  for (int i = 0; i < points; ++i) {
    const double angle = 2 * std::numbers::pi * i / points, radius = i % 2 == 0 ? 500 : 480;
    profile += (i ? ",[" : "[") + std::to_string(radius * std::cos(angle)) + "," +
               std::to_string(radius * std::sin(angle)) + "]";
  }
  return R"({"format":1,"solid":{"primitives":[{"type":"extrusion","length":30,"profile":[)" + profile + "]}]}}\n";
}

void SearchBox(benchmark::State& state) {
  bench::Site site(1, {});
  bench::write(os::mounts().machine(L"d:\\") + "/STAR.prt.1", star(static_cast<int>(state.range(0))));
  const auto part = creo::ProMdlRetrieve(L"STAR", creo::ProMdlType::part);
  if (!part || !actions::searchedBox(part.value, true)) return state.SkipWithError("the star can't be measured");
  for (auto _ : state) benchmark::DoNotOptimize(actions::searchedBox(part.value, true));
}
BENCHMARK(SearchBox)->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond);

}  // namespace
