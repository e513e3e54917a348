// What the view of the dialogs costs the session's thread: bench/README.md has the figures.
#include <benchmark/benchmark.h>

#include "creo/ProUITree.h"
#include "kelvane/ui/lines.h"
#include "kelvane/ui/picture.h"
#include "site.h"

namespace {

namespace view = kelvane::view;
constexpr const char *kTool = "kvanerunner", *kTree = "kvaneLogTT", *kTable = "LargeTable";
constexpr std::size_t kWindow = 80;  // lines that a page asks for

// The tool open, with rows and log lines as the page has to show them.
class Open : public bench::Site {
 public:
  explicit Open(int models) : Site(models, {{"none.xml", {}}}) { openTool(); }

  void log(int lines) {
    for (int i = 0; i < lines; ++i)
      creo::ProUITreeNodeAdd(kTool, kTree, "kvaneRootNode", "n" + std::to_string(i),
                             L"B3 setParameter PART_" + std::to_wstring(i) + L" - a line of a usual length",
                             "kvaneChild");
  }
  [[nodiscard]] nlohmann::json picture() {
    return {{"dialogs", view::dialogsOf(session(), {})}, {"windows", view::windowsOf(session())}};
  }
};

// The state that a page gets first.
void firstView(benchmark::State& state) {
  Open site(100);
  for (auto _ : state) benchmark::DoNotOptimize(view::lineOf(site.picture()));
}
BENCHMARK(firstView)->Unit(benchmark::kMicrosecond);

// A change as it is told in a run: the picture, what differs, and both as text.
void change(benchmark::State& state) {
  Open site(100);
  const nlohmann::json before = site.picture();
  site.session().ui().setCheck(kTool, "kvanePrtFilter", false);
  for (auto _ : state) {
    const nlohmann::json now = site.picture();
    benchmark::DoNotOptimize(view::lineOf(view::changeOf(before, now)));
    benchmark::DoNotOptimize(view::lineOf(now));
  }
}
BENCHMARK(change)->Unit(benchmark::kMicrosecond);

// The last rows of a table, and the last lines of a log.
void tableLines(benchmark::State& state) {
  Open site(static_cast<int>(state.range(0)));
  const view::Window window{kTool, kTable, static_cast<std::size_t>(state.range(0)), kWindow};
  for (auto _ : state) benchmark::DoNotOptimize(view::lineOf(view::linesOf(site.session(), window)));
}
BENCHMARK(tableLines)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

void logLines(benchmark::State& state) {
  Open site(1);
  site.log(static_cast<int>(state.range(0)));
  const view::Window window{kTool, kTree, static_cast<std::size_t>(state.range(0)), kWindow};
  for (auto _ : state) benchmark::DoNotOptimize(view::lineOf(view::linesOf(site.session(), window)));
}
BENCHMARK(logLines)->Arg(20'000)->Arg(200'000)->Unit(benchmark::kMicrosecond);

}  // namespace
