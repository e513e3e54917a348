// What replacing the variables of a text and deciding a filter cost: bench/README.md has the figures.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "core/state.h"
#include "core/xml.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "documents/filter.h"
#include "headless/session.h"
#include "language/variables.h"
#include "os/surroundings.h"

namespace {

namespace fs = std::filesystem;

// A session over a folder with one part.
class Site {
 public:
  Site() : root_(fs::path("/dev/shm") / ("kelvane-template-bench-" + std::to_string(getpid()))) {
    fs::create_directories(root_);
    std::ofstream(root_ / "bracket.prt.1")
        << R"({"format": 1, "parameters": [{"name": "COLOR", "type": "string", "value": "red"},)"
           R"({"name": "MASS", "type": "double", "value": 2.5}, {"name": "COUNT", "type": "integer", "value": 4}]})";
    os::mounts().set(L'd', root_);
    headless::SessionOptions options;
    options.modelFolder = L"d:\\";
    session_ = std::make_unique<headless::Session>(options);
    core::pluginState().creoVersion = L"Creo 8.0";
    model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part).value;
  }
  ~Site() {
    session_.reset();
    fs::remove_all(root_);
  }
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;

  creo::ProMdl model;

 private:
  fs::path root_;
  std::unique_ptr<headless::Session> session_;
};

Site& site() {
  static Site entry;
  return entry;
}

std::wstring plainText(benchmark::State& state) {
  std::wstring text;
  while (text.size() < static_cast<std::size_t>(state.range(0))) text += L"a text of a list, ";
  text.resize(static_cast<std::size_t>(state.range(0)));
  return text;
}

void copyOfAText(benchmark::State& state) {
  const std::wstring text = plainText(state);
  for (auto _ : state) {
    std::wstring copy(text);
    benchmark::DoNotOptimize(copy.data());
  }
}
BENCHMARK(copyOfAText)->Arg(30)->Arg(250)->Arg(2500)->Arg(100000);

// Room enough that the text is delivered.
void templateWithoutToken(benchmark::State& state) {
  const std::wstring text = plainText(state);
  for (auto _ : state) benchmark::DoNotOptimize(language::replaceVariables(text, {}, text.size() + 1));
}
BENCHMARK(templateWithoutToken)->Arg(30)->Arg(250)->Arg(2500)->Arg(100000);

void templateOnAModel(benchmark::State& state, std::wstring_view text) {
  if (!language::replaceVariables(text, site().model)) state.SkipWithError("not replaced");
  for (auto _ : state) benchmark::DoNotOptimize(language::replaceVariables(text, site().model));
}
BENCHMARK_CAPTURE(templateOnAModel, noToken, L"a text of thirty characters...");
BENCHMARK_CAPTURE(templateOnAModel, threeTokens, L"@mdln@ of @mdlpath@ is %COLOR%");
BENCHMARK_CAPTURE(templateOnAModel, threeParameters, L"%COLOR%, %MASS% kg, %COUNT% pieces");
BENCHMARK_CAPTURE(templateOnAModel, threeFunctions, L"$$pre$3$abcdef$$-$$posts$2$abcdef$$-$$sub$1$3$abcdef$$");
BENCHMARK_CAPTURE(templateOnAModel, clock, L"@datede@ @time@ @number@");

// What three tokens ask of Creo, alone.
void operationsOfThreeTokens(benchmark::State& state) {
  const creo::ProMdl model = site().model;
  for (auto _ : state) {
    benchmark::DoNotOptimize(creo::ProMdlNameGet(model));
    benchmark::DoNotOptimize(creo::ProMdlTypeGet(model));
    benchmark::DoNotOptimize(creo::ProMdlDataGet(model));
    const auto parameter = creo::ProParameterInit(creo::ProMdlToModelitem(model).value, L"COLOR");
    benchmark::DoNotOptimize(creo::ProParameterUnitsGet(parameter.value));
    benchmark::DoNotOptimize(creo::ProParameterValueGet(parameter.value));
  }
}
BENCHMARK(operationsOfThreeTokens);

void filterOfTenItems(benchmark::State& state) {
  constexpr std::wstring_view kItems[] = {LR"(type="filename" filename="brack*.prt")", LR"(type="isSkeleton")",
                                          LR"(type="parameter" param="COLOR" value="red")", LR"(type="isInstance")",
                                          LR"(type="isGeneric")"};
  constexpr bool kHold[] = {true, false, true, false, false};
  std::wstring xml = L"<block><filter>";
  for (std::size_t i = 0; i < 10; ++i) {
    xml += L"<i opand=\"true\" filtertype=\"" + std::wstring(kHold[i % 5] ? L"true" : L"false") + L"\" ";
    (xml += kItems[i % 5]) += L"/>";
  }
  const auto document = core::xmlParse(xml + L"</filter></block>").value;
  const core::XmlNode& block = *document->root()->next;
  if (documents::evaluateFilter(block, L"PRT", site().model, true) != documents::kFilterHolds)
    state.SkipWithError("it refuses");
  for (auto _ : state) benchmark::DoNotOptimize(documents::evaluateFilter(block, L"PRT", site().model, true));
}
BENCHMARK(filterOfTenItems);

}  // namespace
