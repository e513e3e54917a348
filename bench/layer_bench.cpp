// Deleting all layers of a model by a star, a layer state holding each of them.
#include <benchmark/benchmark.h>

#include "creo/ProLayer.h"
#include "creo/ProMdl.h"
#include "site.h"

namespace {

using bench::Site;

std::map<std::string, bench::List> lists() {
  return {{"layers.xml",
           {"", R"(<task type="deleteLayer" version="3" forASM="true" forPRT="false" forEF="false" name_0="*"/>)"}}};
}

void fill(creo::ProMdl model, int layers) {
  for (int i = 0; i < layers; ++i) creo::ProLayerCreate(model, L"LAYER_" + std::to_wstring(i));
  const auto state = creo::ProLayerstateCreate(model, L"ALL");
  creo::ProMdlLayerVisit(model, [&](const creo::ProLayer& layer) {
    return creo::ProLayerstateLayerAdd(state.value, layer, creo::ProLayerDisplay::blank);
  });
}

void DeleteLayers(benchmark::State& state) {
  Site site(1, lists());
  site.openTool();
  site.choose("layers.xml");
  const creo::ProMdl model = creo::ProMdlInit(L"TOP", creo::ProMdlType::assembly).value;
  for (auto _ : state) {
    state.PauseTiming();
    for (const creo::ProLayerstate& old : creo::ProLayerstatesGet(model).value) creo::ProLayerstateDelete(old);
    fill(model, static_cast<int>(state.range(0)));
    state.ResumeTiming();
    site.start();
  }
  if (creo::ProMdlLayerVisit(model, [](const creo::ProLayer&) { return creo::ProNoError; }) != creo::ProNotFound)
    state.SkipWithError("layers are left");
}
BENCHMARK(DeleteLayers)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
