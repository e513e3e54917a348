// A table action over many drawings, and the largest QR code as a symbol, on the memory disk.
#include <benchmark/benchmark.h>

#include "site.h"

namespace {

constexpr int kTables = 50, kRows = 8;

std::string drawing(const std::string& name) {
  std::string tables;
  for (int t = 1; t <= kTables; ++t) {
    std::string cells;
    for (int row = 1; row <= kRows; ++row) {
      const std::string at = R"({"row":)" + std::to_string(row) + R"(,"column":)";
      cells += (row > 1 ? "," : "") + at + R"(1,"lines":["Item )" + std::to_string(row) + R"("]},)" + at +
               R"(2,"lines":["&model_name"]})";
    }
    tables += std::string(t > 1 ? "," : "") + R"({"id":)" + std::to_string(t) +
              R"(,"segments":[{"position":{"x":20,"y":20}}],"columns":[15,45],"rows":[7,7,7,7,7,7,7,7],"cells":[)" +
              cells + "]}";
  }
  return R"({"format":1,"models":[{"name":")" + name + R"(","type":"prt"}],"tables":[)" + tables + "]}\n";
}

// All cells of all tables are read, then the tables are moved.
void MoveTables(benchmark::State& state) {
  const int drawings = static_cast<int>(state.range(0));
  bench::Site site(
      drawings,
      {{"move.xml",
        {"",
         R"(<task type="moveTable" version="3" forPRT="false" forASM="false" forDRW="true" forEF="false" text_0="Item 8" )"
         R"(textc_0="*" textr_0="*" nposx_0="-60" nposy_0="20"/>)"}}});
  for (int i = 0; i < drawings; ++i) {
    bench::write(os::mounts().machine(L"d:\\part_" + std::to_wstring(i) + L".drw.1"),
                 drawing("PART_" + std::to_string(i)));
  }
  site.openTool();
  // The drawings of the models in the table come into it, too.
  site.session().ui().press("kvanerunner", "AddAllDrawingsBtn_MenuRMBChooser");
  site.choose("move.xml");
  for (auto _ : state) site.start();
  const auto runs = static_cast<double>(state.iterations());
  if (site.session().calls("ProDwgtableCelltextGet") < runs * drawings * kTables * kRows)
    state.SkipWithError("tables weren't looked at");
  state.counters["us/table"] = benchmark::Counter(
      drawings * kTables / 1e6, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(MoveTables)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

// From the press of the start button to the finished definition.
void LargestQrCode(benchmark::State& state) {
  constexpr int kLines = 12, kLineLength = 240;  // 2,891 bytes with the line feeds: version 40 at the lowest level
  std::string texts;
  for (int i = 0; i < kLines; ++i) {
    std::string line;
    while (line.size() < kLineLength) line += "Bracket 4711-0815, rev. c; ";
    line.resize(kLineLength);
    texts += " value" + std::to_string(i) + "=\"" + line + "\"";
  }
  bench::Site site(
      1, {{"code.xml",
           {"", R"(<task type="setQRCode" version="3" forDRW="true" forEF="false" symname="CODE" encoding="2" )"
                R"(casesensitive="1" eclevel="0" pixelsize="0.5" color="0" valueh="0" valuec="12")" +
                    texts + "/>"}}});
  bench::write(os::mounts().machine(L"d:\\sheet.drw.1"), R"({"format":1})");
  site.session().open(L"SHEET", creo::ProMdlType::drawing);
  site.session().settle();
  site.session().runCommand("KVANEVisitParametersCmd");
  site.session().settle();
  site.choose("code.xml");
  for (auto _ : state) site.start();
  constexpr double kLeast = 177.0 * 177 / 3;  // of a code of 177 modules about half are dark
  const double strokes = site.session().calls("ProDtlentityCreate") / static_cast<double>(state.iterations());
  if (strokes < kLeast) state.SkipWithError("it isn't the largest code");
  state.counters["strokes"] = strokes;
}
BENCHMARK(LargestQrCode)->Unit(benchmark::kMillisecond);

}  // namespace
