// Reading an action list: from a wide text and from a file's bytes, beside pugixml on the same bytes.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <limits>
#include <memory>
#include <pugixml.hpp>
#include <string>

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

// Memory that a process touches for the first time costs more than reading a list into it. So each reader is measured
// in memory that it has had before, which the C library is told to keep, and in fresh memory, as a process reads its
// first list.
constexpr int kLargestKept = 32 << 20;  // bytes of one allocation; the library keeps none above
const bool kMemoryIsKept =
    mallopt(M_MMAP_THRESHOLD, kLargestKept) == 1 && mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max()) == 1;

// Reads a list of range(0) MB over and over, in fresh memory where range(1) is 1. Freeing it counts.
template <class Input, class Read>
void measure(benchmark::State& state, Input inputOf, Read read) {
  const std::string bytes = actionList(static_cast<std::size_t>(state.range(0)) << 20);
  const auto input = inputOf(bytes);
  if (!kMemoryIsKept) state.SkipWithError("the C library doesn't keep memory");
  if (!read(input)) state.SkipWithError("the list is refused");
  for (auto _ : state) {
    if (state.range(1) == 1) {
      state.PauseTiming();
      malloc_trim(0);
      state.ResumeTiming();
    }
    benchmark::DoNotOptimize(read(input));
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes.size()) * static_cast<int64_t>(state.iterations()));
}

const std::string& same(const std::string& bytes) { return bytes; }

void fromWideText(benchmark::State& state) {
  measure(
      state, [](const std::string& bytes) { return text::fromUtf8(bytes); },
      [](const std::wstring& text) { return core::xmlParse(text); });
}

void fromFileBytes(benchmark::State& state) {
  measure(state, same, [](const std::string& bytes) { return core::xmlParse(bytes); });
}

void pugixml(benchmark::State& state) {
  measure(state, same, [](const std::string& bytes) {
    auto document = std::make_unique<pugi::xml_document>();
    if (!document->load_buffer(bytes.data(), bytes.size())) document.reset();
    return document;
  });
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgNames({"MB", "fresh"})->ArgsProduct({{1, 10}, {0, 1}})->Unit(benchmark::kMillisecond);
}
BENCHMARK(fromWideText)->Apply(sizes);
BENCHMARK(fromFileBytes)->Apply(sizes);
BENCHMARK(pugixml)->Apply(sizes);

}  // namespace
