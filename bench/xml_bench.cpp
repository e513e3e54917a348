// Reading an action list: from a wide text and from a file's bytes, beside pugixml on the same bytes.
#include <benchmark/benchmark.h>

#include <pugixml.hpp>

#include "core/xml.h"
#include "text/encoding.h"

namespace {

// Tasks with a dozen attributes and a filter each, as authoring tools write them, up to about a number of bytes.
std::string actionList(std::size_t bytes) {
  std::string list = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n<head/>\n<body>\n";
  for (std::size_t i = 0; list.size() < bytes; ++i) {
    const std::string number = std::to_string(i);
    list +=
        "  <task type=\"setModelParameter\" deak=\"false\" version=\"3\" forPRT=\"true\" forASM=\"true\" "
        "forDRW=\"false\" "
        "forEF=\"true\" name_0=\"BENENNUNG_" +
        number +
        "\" value0=\"Geh&amp;use, gepr\xC3\xBC"
        "ft &lt;" +
        number +
        "&gt;\" path=\"@kvd_path@\\models\\%name%.prt\" designate=\"true\" count=\"1\">\n"
        "    <filter>\n      <item type=\"parameter\" name=\"MATERIAL\" value=\"*STEEL*\" operator=\"and\"/>\n"
        "      <item type=\"filename\" value=\"/^\\d{4}-" +
        number + "$/\"/>\n    </filter>\n  </task>\n";
  }
  return list + "</body>\n<filter/>\n<foot/>\n</list>\n";
}

void setBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<int64_t>(bytes) * static_cast<int64_t>(state.iterations()));
}

void fromWideText(benchmark::State& state) {
  const std::string bytes = actionList(static_cast<std::size_t>(state.range(0)) << 20);
  const std::wstring text = text::fromUtf8(bytes);
  for (auto _ : state) {
    state.PauseTiming();
    std::wstring copy = text;
    state.ResumeTiming();
    auto loaded = core::xmlParse(std::move(copy));
    benchmark::DoNotOptimize(loaded.document->root()->next);
  }
  setBytes(state, bytes.size());
}

void fromFileBytes(benchmark::State& state) {
  const std::string bytes = actionList(static_cast<std::size_t>(state.range(0)) << 20);
  for (auto _ : state) {
    auto loaded = core::xmlParse(bytes);
    benchmark::DoNotOptimize(loaded.document->root()->next);
  }
  setBytes(state, bytes.size());
}

void pugixml(benchmark::State& state) {
  const std::string bytes = actionList(static_cast<std::size_t>(state.range(0)) << 20);
  for (auto _ : state) {
    pugi::xml_document document;
    if (!document.load_buffer(bytes.data(), bytes.size())) state.SkipWithError("pugixml refuses the list");
    benchmark::DoNotOptimize(document.first_child());
  }
  setBytes(state, bytes.size());
}

BENCHMARK(fromWideText)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(fromFileBytes)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(pugixml)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

}  // namespace
