// Long relations edited by many patterns through a list, on the memory disk.
#include <benchmark/benchmark.h>

#include "site.h"

namespace {

constexpr int kPatterns = 20;

void EditRelations(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(0));
  std::string lines;
  for (int i = 0; i < count; ++i)
    lines +=
        std::string(i ? "," : "") + "\"P" + std::to_string(i) + " = " + std::to_string(i % kPatterns) + " * 7.85\"";
  std::string task =
      R"(<task type="editModelRelationLines" version="3" forPRT="true" forEF="false" rel="true" locline="")";
  task += " replWord=\"7.85\" through=\"7.83\" editlinec=\"" + std::to_string(kPatterns) + "\"";
  for (int i = 0; i < kPatterns; ++i)
    task += " editline" + std::to_string(i) + "=\"* = " + std::to_string(i) + " * 7.8*\"";
  bench::Site site(1, {{"edit.xml", {"", task + "/>"}}});
  bench::write(os::mounts().machine(L"d:\\long.prt.1"), R"({"format":1,"relations":[)" + lines + "]}\n");
  site.session().open(L"LONG", creo::ProMdlType::part);
  site.session().settle();
  site.session().runCommand("KVANEVisitParametersCmd");
  site.session().settle();
  site.choose("edit.xml");
  for (auto _ : state) site.start();
}
BENCHMARK(EditRelations)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
