// Information sheets: of one model with many parameters, and of many models.
#include <benchmark/benchmark.h>

#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "site.h"

namespace {

using bench::Site;

const std::string kSheet =
    R"(<task type="writeInformationPDF" version="3" forPRT="true" forASM="true" forDRW="true" forEF="false" )"
    R"(folder="t:\" file="@mdln@" overwriteExisting="true" units="true" parameter="true"/>)";

void SheetOfParameters(benchmark::State& state) {
  Site site(1, {{"sheet.xml", {"", kSheet}}});
  site.openTool();
  site.choose("sheet.xml");
  const creo::ProMdl model = creo::ProMdlInit(L"TOP", creo::ProMdlType::assembly).value;
  const auto owner = creo::ProMdlToModelitem(model);
  for (int i = 0; i < state.range(0); ++i)
    creo::ProParameterCreate(owner.value, L"PARAMETER_" + std::to_wstring(i),
                             {.type = creo::ProParamvalueType::string, .string = L"some text of a usual length"});
  for (auto _ : state) site.start();
}
BENCHMARK(SheetOfParameters)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

// One group over all that the assembly uses.
void SheetsOfModels(benchmark::State& state) {
  Site site(
      static_cast<int>(state.range(0)),
      {{"sheets.xml",
        {"", R"(<task type="groupActions" version="3" reworkMode="3"><subtasks>)" + kSheet + "</subtasks></task>"}}});
  site.openTool();
  site.choose("sheets.xml");
  for (auto _ : state) site.start();
}
BENCHMARK(SheetsOfModels)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
