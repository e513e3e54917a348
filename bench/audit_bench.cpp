// An audit over models in a folder on the memory disk: a report with a row a model and 30 columns.
#include <benchmark/benchmark.h>

#include "site.h"

namespace {

using bench::Site;

std::map<std::string, bench::List> lists() {
  const std::string flags = R"(version="3" forPRT="true" forASM="true" forDRW="true" forEF="false" )";
  std::string columns = R"(value="true" art="true" designated="true" reporter="audit")";
  for (int i = 0; i < 9; ++i) columns += " paramName_" + std::to_string(i) + "=\"PARAMETER_" + std::to_string(i) + '"';
  return {{"audit.xml",
           {"<task type=\"openCSVReport\" " + flags +
                R"(name="audit" file="t:\audit.csv" charsetUTF="true" sep="sem" fnfirst="true" )" +
                R"(overwrite="true" newRowAtNewModel="true"/>)",
            "<task type=\"reportModeldata\" " + flags + R"(reporter="audit" filename="true" modified="true"/>)" +
                "<task type=\"writeParameters\" " + flags + columns + "/>"}}};
}

// 27 columns of parameters, two of the model, the leading one.
void Audit(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)), lists());
  site.openTool();
  site.choose("audit.xml");
  for (auto _ : state) site.start();
  state.counters["us/model"] =
      benchmark::Counter(static_cast<double>(state.range(0)) / 1e6,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(Audit)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
