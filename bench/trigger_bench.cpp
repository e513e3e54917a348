// What a trigger that decides not to fire costs a session: bench/README.md has the figures.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProNotify.h"
#include "headless/session.h"
#include "os/surroundings.h"
#include "run/triggers.h"

namespace {

namespace fs = std::filesystem;
using creo::ProNotifyType;

// A session with one part before the user; a list hangs on saves and regenerations of drawings alone.
class Site {
 public:
  Site() : root_(fs::path("/dev/shm") / ("kelvane-trigger-bench-" + std::to_string(getpid()))) {
    fs::create_directories(root_);
    std::ofstream(root_ / "bracket.prt.1") << R"({"format": 1})";
    os::mounts().set(L'd', root_);
    os::mounts().set(L'i', KVD_INSTALLATION);
    headless::SessionOptions options;
    options.modelFolder = L"d:\\";
    options.textFolder = L"i:\\text\\";
    session_ = std::make_unique<headless::Session>(options);
    model = session_->open(L"BRACKET", creo::ProMdlType::part).value;
    session_->settle();
    for (const core::Trigger trigger : {core::Trigger::beforeSave, core::Trigger::afterRegenerate}) {
      core::pluginState().trigger(trigger).startKvz = L"standards say";
      core::pluginState().trigger(trigger).startConf = L"00101";
    }
    run::detachTriggers();  // makes what they keep, which then outlives this object
    run::attachTriggers();
  }
  ~Site() {
    run::detachTriggers();
    core::pluginState().reset();
    session_.reset();
    fs::remove_all(root_);
  }
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;

  void raise(ProNotifyType type) {
    session_->raise(type, model);
    if (session_->messages().size() > 100'000) session_->clearMessages();
  }

  creo::ProMdl model;

 private:
  fs::path root_;
  std::unique_ptr<headless::Session> session_;
};

Site& site() {
  static Site entry;
  return entry;
}

// By the digits: the model is a part.
void LeftOutByItsDigits(benchmark::State& state) {
  Site& here = site();
  for (auto _ : state) here.raise(ProNotifyType::saveBefore);
}
BENCHMARK(LeftOutByItsDigits);

// By the memory of the last regeneration.
void RegeneratedOnceMore(benchmark::State& state) {
  Site& here = site();
  for (auto _ : state) here.raise(ProNotifyType::regenerateAfter);
}
BENCHMARK(RegeneratedOnceMore);

// Inside another trigger's run.
void InsideAnother(benchmark::State& state) {
  Site& here = site();
  core::pluginState().triggerType = 3;
  for (auto _ : state) here.raise(ProNotifyType::saveBefore);
  core::pluginState().triggerType = 0;
}
BENCHMARK(InsideAnother);

// What each save costs where no trigger hangs.
void NobodyListens(benchmark::State& state) {
  Site& here = site();
  for (auto _ : state) here.raise(ProNotifyType::eraseBefore);
}
BENCHMARK(NobodyListens);

}  // namespace
