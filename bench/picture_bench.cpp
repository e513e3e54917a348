// The shaded picture of a solid of many triangles.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

#include "headless/pictures/shaded.h"

namespace {

// A ball of about that many triangles.
headless::geometry::Mesh ball(int triangles) {
  headless::geometry::Mesh mesh;
  const auto rings = static_cast<std::uint32_t>(std::sqrt(triangles / 4.0)), around = rings * 2;
  for (std::uint32_t i = 0; i <= rings; ++i)
    for (std::uint32_t j = 0; j < around; ++j) {
      const double up = std::numbers::pi * i / rings, turn = 2 * std::numbers::pi * j / around;
      const std::array<float, 3> p{static_cast<float>(std::sin(up) * std::cos(turn)),
                                   static_cast<float>(std::sin(up) * std::sin(turn)), static_cast<float>(std::cos(up))};
      mesh.points.push_back(p);
      mesh.normals.push_back(p);
    }
  for (std::uint32_t i = 0; i < rings; ++i)
    for (std::uint32_t j = 0; j < around; ++j) {
      const std::uint32_t a = i * around + j, b = i * around + (j + 1) % around;
      mesh.triangles.push_back({a, a + around, b});
      mesh.triangles.push_back({b, a + around, b + around});
    }
  return mesh;
}

void shadedPicture(benchmark::State& state) {
  const headless::geometry::Mesh mesh = ball(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const headless::Image image = headless::shaded({{.mesh = &mesh}}, {}, 1024, 768);
    benchmark::DoNotOptimize(headless::jpegOf(image, 600));
  }
  state.counters["triangles"] = static_cast<double>(mesh.triangles.size());
}
BENCHMARK(shadedPicture)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
