// What it costs to build and to measure a body whose flat faces have many edges: a gear of 100 teeth, of four edges
// each.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

#include "headless/geometry/body.h"

namespace {

using namespace headless::geometry;

std::vector<Primitive> gear() {
  Primitive teeth;
  teeth.kind = PrimitiveKind::extrusion;
  teeth.length = 30;
  for (int i = 0; i < 400; ++i) {
    const double radius = i % 4 == 0 || i % 4 == 3 ? 97 : 102, turn = i * std::numbers::pi / 200;
    teeth.profile.push_back({radius * std::cos(turn), radius * std::sin(turn)});
  }
  Primitive bore;
  bore.kind = PrimitiveKind::hole;
  bore.diameter = 45;
  return {teeth, bore};
}

void buildGear(benchmark::State& state) {
  const std::vector<Primitive> primitives = gear();
  for (auto _ : state) benchmark::DoNotOptimize(build(primitives));
}
// A body keeps what it measures, so that each is another one.
void measureGear(benchmark::State& state) {
  const std::vector<Primitive> primitives = gear();
  for (auto _ : state) {
    state.PauseTiming();
    const BodyPtr body = build(primitives).body;
    state.ResumeTiming();
    benchmark::DoNotOptimize(measure(*body));
  }
}
BENCHMARK(buildGear)->Unit(benchmark::kMillisecond);
BENCHMARK(measureGear)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace
