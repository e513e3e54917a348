// Relations of 20,000 lines, edited and thinned out with 20 patterns by a list.
#include <benchmark/benchmark.h>

#include "creo/ProMdl.h"
#include "creo/ProRelset.h"
#include "site.h"

namespace {

constexpr int kPatterns = 20;

std::string patterns(const std::string& key, const std::string& form) {
  std::string all = key + "c=\"" + std::to_string(kPatterns) + "\"";
  for (int i = 0; i < kPatterns; ++i) all += " " + key + std::to_string(i) + "=\"" + form + std::to_string(i) + "*\"";
  return all;
}

std::map<std::string, bench::List> lists() {
  const std::string flags = R"(version="3" forPRT="true" forEF="false" rel="true" )";
  return {
      {"edit.xml",
       {"", "<task type=\"editModelRelationLines\" " + flags + patterns("editline", "*GROUP_") +
                R"( replWord="VALUE" through="NUMBER"/>)"}},
      {"delete.xml", {"", "<task type=\"deleteModelRelationLines\" " + flags + patterns("delline", "*GROUP_") + "/>"}}};
}

// Half of the lines fit one of the patterns.
std::vector<std::wstring> relations(int count) {
  std::vector<std::wstring> lines;
  for (int i = 0; i < count; ++i)
    lines.push_back((i % 2 == 0 ? L"GROUP_" + std::to_wstring(i % kPatterns) : L"OTHER") + L"_VALUE" +
                    std::to_wstring(i) + L" = 2 * " + std::to_wstring(i));
  return lines;
}

void relationLines(benchmark::State& state, const std::string& list) {
  bench::Site site(1, lists());
  site.openTool();
  site.choose(list);
  const auto part = creo::ProMdlInit(L"PART_0", creo::ProMdlType::part);
  const auto item = creo::ProMdlToModelitem(part.value);
  const auto lines = relations(static_cast<int>(state.range(0)));
  const auto set = creo::ProRelsetCreate(item.value);
  for (auto _ : state) {
    state.PauseTiming();
    creo::ProRelsetRelationsSet(set.value, lines);
    state.ResumeTiming();
    site.start();
  }
}
void EditLines(benchmark::State& state) { relationLines(state, "edit.xml"); }
void DeleteLines(benchmark::State& state) { relationLines(state, "delete.xml"); }
BENCHMARK(EditLines)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteLines)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
