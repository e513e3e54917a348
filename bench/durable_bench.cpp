// What a save costs while the disk is waited for after each, behind the run, and not at all; and what a run keeps in
// memory for each model: bench/README.md has the figures and what they are held against.
#include <benchmark/benchmark.h>

#include <fstream>
#include <sstream>

#include "kelvane/program.h"
#include "site.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kTouchAndSave =
    R"(<task type="addModelParameter" version="3" forPRT="true" forASM="true" forDRW="true" forEF="false" )"
    R"(forInstances="false" count="1" name_0="NORM" type_0="String" value_0="WN-100"/>)"
    R"(<task type="saveModel" version="3" forPRT="true" forASM="true" forDRW="true" forEF="false"/>)";
constexpr const char* kTouch =
    R"(<task type="setUserVariableDirect" version="3" forPRT="true" forASM="true" forDRW="true" forEF="false" )"
    R"(name="COUNT" inc="true" incno="1"/>)";

// Parts that nobody uses, and a package with these two lists.
class Parts {
 public:
  Parts(const fs::path& place, int models) : root_(place / ("kelvane-bench-" + std::to_string(getpid()))) {
    fs::remove_all(root_);
    std::string parameters;
    for (int p = 0; p < 20; ++p)
      parameters += std::string(p ? "," : "") + R"({"name":"PARAMETER_)" + std::to_string(p) +
                    R"(","type":"string","value":"some text of a usual length"})";
    for (int i = 0; i < models; ++i)
      bench::write(root_ / "models" / ("part_" + std::to_string(i) + ".prt.1"),
                   R"({"format":1,"parameters":[)" + parameters + "]}\n");
    for (const auto& [name, body] : {std::pair("save.xml", kTouchAndSave), std::pair("touch.xml", kTouch)})
      bench::write(root_ / "package/actionlists" / name,
                   std::string("<l><h></h><b>") + body + "</b><f></f><e></e></l>");
    bench::write(root_ / "package/system/index.kvane", "1\nbench\n");
    os::setEnvironment(L"XDG_CACHE_HOME", text::fromUtf8((root_ / "cache").string()));
    os::setEnvironment(L"KELVANE_INSTALLATION", text::fromUtf8(KVD_INSTALLATION));
  }
  ~Parts() { fs::remove_all(root_); }
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  [[nodiscard]] bool run(const std::string& list, const std::string& durable) const {
    std::ostringstream out, err;
    return kelvane::program({"run", (root_ / "package").string(), list, (root_ / "models").string(), "--again", "-q",
                             "--durable", durable},
                            out, err) == 0;
  }

 private:
  fs::path root_;
};

// 2,000 models that are touched and saved in the machine's temporary folder, which must be a disk.
void SavesOnDisk(benchmark::State& state, const std::string& durable) {
  for (auto _ : state) {
    state.PauseTiming();
    auto parts = std::make_unique<Parts>(fs::temp_directory_path(), 2000);
    state.ResumeTiming();
    if (!parts->run("save", durable)) state.SkipWithError("the run failed");
    state.PauseTiming();
    parts.reset();
    state.ResumeTiming();
  }
}
BENCHMARK_CAPTURE(SavesOnDisk, none, "none")->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK_CAPTURE(SavesOnDisk, behind, "run")->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK_CAPTURE(SavesOnDisk, each, "each")->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

// A number of kilobytes that the system keeps of this process; the most that was used begins anew behind a reset.
double kilobytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with(field)) return std::stod(line.substr(field.size() + 1));
  return 0;
}

// The most memory that a run over so many models takes beyond what the process had, for each of them.
void MemoryOfARun(benchmark::State& state, const std::string& list) {
  const int models = static_cast<int>(state.range(0));
  for (auto _ : state) {
    const Parts parts("/dev/shm", models);
    std::ofstream("/proc/self/clear_refs") << "5";
    const double before = kilobytes("VmRSS");
    if (!parts.run(list, "none")) state.SkipWithError("the run failed");
    state.counters["peak_MB"] = kilobytes("VmHWM") / 1000;
    state.counters["KB/model"] = (kilobytes("VmHWM") - before) / models;
  }
}
BENCHMARK_CAPTURE(MemoryOfARun, touch, "touch")->Arg(1000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MemoryOfARun, save, "save")->Arg(1000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
