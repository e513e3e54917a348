// Bodies of STEP texts: what it costs that another program reads them.
#include <benchmark/benchmark.h>

#include "headless/geometry/exchange.h"
#include "headless/geometry/foreign_answer.h"
#include "headless/geometry/foreign_place.h"
#include "os/program.h"

namespace {

using namespace headless::geometry;

std::string boxText() {
  Primitive box;
  box.size = {80, 40, 5};
  return stepText(*build({box}).body, 1).bytes;
}
void readOnce(benchmark::State& state, const std::string& step) {
  Primitive body;
  body.kind = PrimitiveKind::import;
  body.step = step;
  if (!build({body}).body) state.SkipWithError("no body");
}

void oneProgramForAll(benchmark::State& state) {
  const std::string step = boxText();
  readOnce(state, step);
  for (auto _ : state) readOnce(state, step);
}
void oneProgramEach(benchmark::State& state) {
  const std::string step = boxText();
  const std::string folder = os::programFile().substr(0, os::programFile().rfind('/'));
  const ForeignPlaceGuard guard;
  bool odd = false;
  for (auto _ : state) {
    odd = !odd;  // another spelling is another program
    foreignPlace().program = folder + (odd ? "/../" : "/.././") + "kelvane-import";
    readOnce(state, step);
  }
}
void inThisProcess(benchmark::State& state) {
  const std::string request = R"({"job": 1, "format": 0, "as": 0, "path": "", "memory": 4000000000, "processor": 600})"
                              "\n" +
                              boxText();
  for (auto _ : state) benchmark::DoNotOptimize(answerForeign(request));
}
BENCHMARK(oneProgramForAll)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(oneProgramEach)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(inThisProcess)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
