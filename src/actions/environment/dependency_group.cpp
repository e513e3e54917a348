// groupActions on each model that a model uses.
#include <set>
#include <vector>

#include "actions/environment/group_modes.h"
#include "actions/visits.h"
#include "core/log.h"
#include "creo/ProMdl.h"

namespace actions {
namespace {

// Depth first, without recursion: assemblies may be nested as deep as they like.
class DependencyWalk {
 public:
  explicit DependencyWalk(const Task& task) : task_(task) {}

  void run() {
    // The given model isn't run, also where one that it uses leads back to it.
    if (const auto name = creo::ProMdlNameGet(task_.model())) {
      const auto type = creo::ProMdlTypeGet(task_.model());
      visited_.insert(name.value + L"." + creo::typeExtension(type.value));
    }
    enter(task_.model());
    while (!frames_.empty()) {
      if (frames_.back().at < frames_.back().uses.size()) {
        meet(creo::ProDependency(frames_.back().uses[frames_.back().at++]));
        continue;
      }
      const creo::ProMdl model = frames_.back().model;
      frames_.pop_back();
      if (!frames_.empty()) work(model);
    }
  }

 private:
  struct Frame {
    creo::ProMdl model;
    std::vector<creo::ProDependency> uses;
    std::size_t at = 0;
  };

  void enter(creo::ProMdl model) { frames_.push_back({model, usedBy(model)}); }

  void meet(const creo::ProDependency& used) {
    using enum creo::ProMdlType;
    if (used.type != part && used.type != assembly && used.type != drawing) return;
    const auto model = creo::ProMdlInit(used.name, used.type);
    if (!model) return;
    core::logIndented(used.name, core::kNormal, 1);
    if (visited_.insert(used.name + L"." + used.typeText).second)
      enter(model.value);
    else
      core::logIndented(L"already visited, no second visit", core::kNormal, 2);
  }

  void work(creo::ProMdl model) {
    const std::wstring_view extension = solidExtension(model);
    const auto name = creo::ProMdlNameGet(model);
    if (extension.empty() || !name) return;
    core::logIndented(name.value, core::kNormal, 1);
    runTasksOn(task_, model, name.value, extension);
  }

  const Task& task_;
  std::vector<Frame> frames_;
  std::set<std::wstring> visited_;  // "NAME.EXT"
};

}  // namespace

void runOnDependencies(const Task& task) {
  DependencyWalk(task).run();
  core::logIndented(L"Clean up memory and reshow first model", core::kNormal, 1);
  creo::ProMdlDisplay(task.model());
}

}  // namespace actions
