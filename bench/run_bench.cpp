// What a run and the filling of the model table cost, over models in a folder on the memory disk: bench/README.md has
// the figures and what they are held against.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "core/state.h"
#include "engine/model_table.h"
#include "headless/proui/ui.h"
#include "headless/session/session.h"
#include "kelvane/package_source.h"
#include "kelvane/packing.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace {

namespace fs = std::filesystem;

void write(const fs::path& path, const std::string& bytes) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

// Parts of a believable size below one assembly, and a package with two lists: one of 20 cheap actions, one of none.
class Site {
 public:
  explicit Site(int models) : root_(fs::path("/dev/shm") / ("kelvane-bench-" + std::to_string(getpid()))) {
    fs::remove_all(root_);
    std::string components;
    for (int i = 0; i < models; ++i) {
      const std::string name = "PART_" + std::to_string(i);
      std::string parameters;
      for (int p = 0; p < 20; ++p) {
        parameters += std::string(p ? "," : "") + R"({"name":"PARAMETER_)" + std::to_string(p) +
                      R"(","type":"string","value":"some text of a usual length"})";
      }
      write(root_ / "models" / (name + ".prt.1"), R"({"format":1,"parameters":[)" + parameters + "]}\n");
      components += std::string(i ? "," : "") + R"({"name":")" + name + R"(","type":"prt"})";
    }
    write(root_ / "models/TOP.asm.1", R"({"format":1,"components":[)" + components + "]}\n");
    const std::string action = R"(<task type="setUserVariableDirect" version="3" forPRT="true" forASM="true" )"
                               R"(forDRW="true" forEF="false" name="COUNT" inc="true" incno="1"/>)";
    std::string twenty;
    for (int i = 0; i < 20; ++i) twenty += action;
    package("twenty.xml", twenty);
    package("none.xml", "");
    write(root_ / "package/system/index.kvane", "1\nbench\n");
    write(root_ / "packages/bench.kvz", kelvane::packed(*kelvane::openPackage(root_ / "package")));
    write(root_ / "conf/kvd_main.cfg",
          "kvd_kvz_path=p:\\\nkvd_temp_path=t:\\\nkvd_no_user_cfg=1\nkvd_auto_unset_already_reworked_models=0\n"
          "kvd_write_history_in_models=0\n");
    fs::create_directories(root_ / "temp");
    os::mounts().set(L'd', root_ / "models");
    os::mounts().set(L'p', root_ / "packages");
    os::mounts().set(L't', root_ / "temp");
    os::mounts().set(L'c', root_);
    os::mounts().set(L'i', KVD_INSTALLATION);
    os::setEnvironment(L"KVD_CONF_DIR", L"c:\\");
    headless::SessionOptions options;
    options.modelFolder = L"d:\\";
    options.textFolder = L"i:\\text\\";
    session_ = std::make_unique<headless::Session>(options);
    session_->loadPlugin();
  }
  ~Site() {
    session_.reset();
    fs::remove_all(root_);
  }
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;

  headless::Session& session() { return *session_; }
  // The tool open on the assembly, its table filled.
  void openTool() {
    session_->open(L"TOP", creo::ProMdlType::assembly);
    session_->settle();
    session_->runCommand("KVANEVisitParametersCmd");
    session_->settle();
  }
  void choose(const std::string& list) {
    session_->ui().choose("kvanerunner", "kvaneActionlistChooser", list);
    session_->settle();
  }
  void start() {
    session_->ui().press("kvanerunner", "kvaneStart");
    session_->settle();
  }
  // Bytes of all documents.
  [[nodiscard]] double documents() const {
    double all = 0;
    for (const auto& entry : fs::directory_iterator(root_ / "models")) all += static_cast<double>(entry.file_size());
    return all;
  }

 private:
  void package(const std::string& name, const std::string& body) {
    write(root_ / "package/actionlists" / name, "<l><h></h><b>" + body + "</b><f></f><e></e></l>");
  }
  fs::path root_;
  std::unique_ptr<headless::Session> session_;
};

void runOver(benchmark::State& state, const std::string& list) {
  Site site(static_cast<int>(state.range(0)));
  site.openTool();
  site.choose(list);
  for (auto _ : state) site.start();
  state.counters["us/model"] =
      benchmark::Counter(static_cast<double>(state.range(0)) / 1e6,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
void RunTwentyActions(benchmark::State& state) { runOver(state, "twenty.xml"); }
void RunNoAction(benchmark::State& state) { runOver(state, "none.xml"); }
BENCHMARK(RunTwentyActions)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(RunNoAction)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

// Opening the assembly and filling the table from it, models read from their documents.
void FillTable(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto site = std::make_unique<Site>(static_cast<int>(state.range(0)));
    state.ResumeTiming();
    site->openTool();
    state.PauseTiming();
    site.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(FillTable)->Arg(500)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The table filled again, models in memory.
void RefillTable(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  site.openTool();
  for (auto _ : state) engine::refreshModelTable();
}
BENCHMARK(RefillTable)->Arg(500)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);

// Memory after a run of twenty actions, beside the bytes of the documents.
void Memory(benchmark::State& state) {
  for (auto _ : state) {
    malloc_trim(0);
    const auto before = mallinfo2();
    Site site(static_cast<int>(state.range(0)));
    site.openTool();
    site.choose("twenty.xml");
    site.start();
    const auto after = mallinfo2();
    state.counters["used_MB"] =
        static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / 1e6;
    state.counters["documents_MB"] = site.documents() / 1e6;
  }
}
BENCHMARK(Memory)->Arg(500)->Arg(5000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
