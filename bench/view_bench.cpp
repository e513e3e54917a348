// What it costs to work out the lines of views: a plate with holes in three views, an assembly of plates.
#include <benchmark/benchmark.h>

#include "headless/geometry/foreign_place.h"
#include "headless/geometry/seen.h"

namespace {

using namespace headless::geometry;

// A plate with rows times rows holes.
BodyPtr plate(int rows) {
  Primitive box;
  box.size = {20.0 * (rows + 1), 20.0 * (rows + 1), 10};
  std::vector<Primitive> all = {box};
  for (int i = 1; i <= rows; ++i)
    for (int j = 1; j <= rows; ++j) {
      Primitive hole;
      hole.kind = PrimitiveKind::hole;
      hole.diameter = 12;
      hole.placement.origin = {20.0 * i, 20.0 * j, 0};
      all.push_back(hole);
    }
  return build(all).body;
}

constexpr creo::ProTransform kSides[] = {
    {}, {{1, 0, 0}, {0, 0, -1}, {0, 1, 0}, {}}, {{0, 0, -1}, {0, 1, 0}, {1, 0, 0}, {}}};

// Each view has a scale that no view had before: none is kept.
double nextScale() {
  static double scale = 1;
  return scale += 1e-9;
}
// As the views of a sheet are: worked out side by side, then taken.
void draw(benchmark::State& state, Sight sight) {
  std::vector<Sight> sights;
  for (const creo::ProTransform& side : kSides) {
    sight.screen = side;
    sight.scale = nextScale();
    sights.push_back(sight);
  }
  seeAhead(sights);
  for (const Sight& each : sights)
    if (seen(each).curves.empty()) state.SkipWithError("no view");
}

void plateInThreeViews(benchmark::State& state) {
  const Sight sight{.bodies = {{plate(10), {}, 1}}, .hidden = true, .axes = true};
  draw(state, sight);  // the program is started
  for (auto _ : state) draw(state, sight);
}
void plateByFacets(benchmark::State& state) {
  const ForeignPlaceGuard guard;
  foreignPlace().viewTime = std::chrono::milliseconds(0);
  const Sight sight{.bodies = {{plate(3), {}, 1}}, .hidden = true};
  for (auto _ : state) draw(state, sight);
}
void platesSideBySide(benchmark::State& state) {
  const BodyPtr body = plate(2);
  Sight sight{.axes = true};
  for (int i = 0; i < state.range(0); ++i)
    sight.bodies.push_back({body, {.origin = {(i % 20) * 80.0, (i / 20) * 80.0, 0}}, 1});
  for (auto _ : state) draw(state, sight);
}
// An assembly of 1,000 parts of 31 faces each, without hidden lines.
void thousandParts(benchmark::State& state) {
  const BodyPtr body = plate(5);
  Sight sight{.axes = true};
  for (int i = 0; i < 1000; ++i) sight.bodies.push_back({body, {.origin = {(i % 32) * 130.0, (i / 32) * 130.0, 0}}, 1});
  const ForeignPlaceGuard guard;
  foreignPlace().viewTime = std::chrono::seconds(300);
  for (auto _ : state) {
    sight.screen = kSides[state.range(0)];
    sight.scale = nextScale();
    const Seen lines = seen(sight);
    if (lines.curves.empty() || lines.isFaceted) state.SkipWithError("no view");
  }
}
void keptView(benchmark::State& state) {
  const Sight sight{.bodies = {{plate(10), {}, 1}}, .hidden = true, .axes = true};
  for (auto _ : state) benchmark::DoNotOptimize(seen(sight));
}
BENCHMARK(plateInThreeViews)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(plateByFacets)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(platesSideBySide)->Arg(20)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(thousandParts)->DenseRange(0, 2)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(keptView)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
