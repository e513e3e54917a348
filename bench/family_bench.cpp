// A family table verified with regeneration, on the memory disk: each instance is built, regenerated and erased.
#include <benchmark/benchmark.h>

#include "site.h"

namespace {

std::string generic(int instances) {
  std::string rows;
  for (int i = 0; i < instances; ++i) {
    const std::string number = std::to_string(i);
    rows += std::string(i ? "," : "") + R"({"name":"BOLT_)" + number + R"(","values":{"SIZE":)" + number + ".5}}";
  }
  return R"({"format":1,"density":7.8,"parameters":[{"name":"SIZE","type":"double","value":3.0},)"
         R"({"name":"WEIGHT","type":"double","value":0.0}],"relations":["WEIGHT = SIZE * 2"],)"
         R"("familyTable":{"items":[{"type":"parameter","name":"SIZE"},{"type":"parameter","name":"WEIGHT"}],)"
         R"("instances":[)" +
         rows + "]}}\n";
}

void VerifyFamilyTable(benchmark::State& state) {
  const std::string flags = R"(version="3" forPRT="true" forEF="false" )";
  bench::Site site(1, {{"verify.xml", {"", "<task type=\"verifyFamilietable\" " + flags + "twice=\"true\"/>"}}});
  bench::write(os::mounts().machine(L"d:\\bolt.prt.1"), generic(static_cast<int>(state.range(0))));
  site.session().open(L"BOLT", creo::ProMdlType::part);
  site.session().settle();
  site.session().runCommand("KVANEVisitParametersCmd");
  site.session().settle();
  site.choose("verify.xml");
  for (auto _ : state) site.start();
  state.counters["us/instance"] =
      benchmark::Counter(static_cast<double>(state.range(0)) / 1e6,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(VerifyFamilyTable)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

}  // namespace
