// Encoding PDF417 codes, beside zint on the same texts at the same level. "codewords" are rows by columns of the
// symbol.
#include <benchmark/benchmark.h>
#include <zint.h>

#include "barcode/pdf417.h"

namespace {

constexpr int kLevel = 3, kPad = 900;

std::string mixedText(std::int64_t size) {
  std::string text;
  while (static_cast<std::int64_t>(text.size()) < size)
    text += "GB-120-22; Gear z=100 m=2, 16MnCr5: 6.05 kg 20261125000123 ";
  text.resize(static_cast<std::size_t>(size));
  return text;
}

void pdf417(benchmark::State& state) {
  const std::string text = mixedText(state.range(0));
  double codewords = 0;
  for (auto _ : state) {
    barcode::Pdf417 code;
    barcode::pdf417init(code);
    code.text = text;
    code.options = barcode::kFixedErrorLevel;
    code.errorLevel = kLevel;
    barcode::paintCode(code);
    std::size_t data = code.codewords.empty() ? 0 : static_cast<std::size_t>(code.codewords.front());
    while (data > 0 && code.codewords[data - 1] == kPad) --data;
    codewords = static_cast<double>(data);
    benchmark::DoNotOptimize(code.outBits.data());
  }
  state.counters["data codewords"] = codewords;
}
BENCHMARK(pdf417)->Arg(50)->Arg(500)->Arg(1000)->Unit(benchmark::kMicrosecond);

void zintPdf417(benchmark::State& state) {
  const std::string text = mixedText(state.range(0));
  double codewords = 0;
  constexpr int kFrame = 69, kModules = 17;  // start, stop and row indicators; a codeword
  for (auto _ : state) {
    zint_symbol* symbol = ZBarcode_Create();
    symbol->symbology = BARCODE_PDF417;
    symbol->option_1 = kLevel;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    if (ZBarcode_Encode(symbol, bytes, static_cast<int>(text.size())) >= ZINT_ERROR)
      state.SkipWithError(symbol->errtxt);
    // With padding: zint doesn't tell its codewords.
    codewords = static_cast<double>(symbol->rows) * ((symbol->width - kFrame) / kModules) - (2 << kLevel);
    ZBarcode_Delete(symbol);
  }
  state.counters["data codewords"] = codewords;
}
BENCHMARK(zintPdf417)->Arg(50)->Arg(500)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
