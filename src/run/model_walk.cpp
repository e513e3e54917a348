#include "run/model_walk.h"

#include <vector>

#include "core/log.h"
#include "creo/ProDrawing.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/guards.h"
#include "documents/predicates.h"
#include "run/model_row.h"
#include "run/row_name.h"
#include "text/format.h"

namespace run {
namespace {

struct Step {
  creo::ProMdl model;
  bool fromDependency;
};
struct Frame {
  WalkedModel self;
  std::vector<Step> next;
  std::size_t at = 0;
};

void failureLine(std::wstring_view call) {
  core::creoLog(text::format(L"<KVD> sourceData - Failure while use %s", call));
}

// The name without the generic's in "NAME<GENERIC>".
std::wstring_view bareName(std::wstring_view name) { return name.substr(0, name.find(L'<')); }

// False where the model has no folder: it was never saved.
bool changeToFolderOf(creo::ProMdl model, creo::DirectoryGuard& guard) {
  const auto data = creo::ProMdlDataGet(model);
  if (!data || data.value.device.empty()) return false;
  return guard.change(data.value.device + L":" + data.value.path) == creo::ProNoError;
}

class Walk {
 public:
  Walk(const WalkFlags& flags, std::unordered_set<std::string>& visited) : flags_(flags), visited_(visited) {}

  void run(creo::ProMdl start, creo::FunctionRef<void(const WalkedModel&)> leave) {
    enter({start, false});
    while (!frames_.empty()) {
      Frame& frame = frames_.back();
      if (frame.at < frame.next.size()) {
        enter(frame.next[frame.at++]);  // may move the frames
        continue;
      }
      const WalkedModel done = std::move(frame.self);
      frames_.pop_back();
      leave(done);
    }
  }

 private:
  void enter(Step step) {
    const auto type = creo::ProMdlTypeGet(step.model);
    if (!type) {
      core::creoLog(L"<KVD> sourceData - Failure while ProMdlTypeGet");
      return;
    }
    if (type.value == creo::ProMdlType::unused) core::creoLog(L"<KVD> UNUSED MODEL");
    if (!hasRows(type.value)) return;
    const auto name = creo::ProMdlNameGet(step.model);
    if (!name) return failureLine(L"ProMdlNameGet");
    std::string row = rowName(name.value, type.value);
    if (!visited_.insert(row).second) return;

    Frame frame{{std::move(row), step.model, type.value, step.fromDependency}, {}, 0};
    if (type.value != creo::ProMdlType::drawing) addOfSolid(step.model, name.value, frame.next);
    if (!flags_.currentOnly) addUsed(step.model, type.value, frame.next);
    frames_.push_back(std::move(frame));
  }

  void addOfSolid(creo::ProMdl model, const std::wstring& name, std::vector<Step>& next) {
    if (!flags_.skipGenerics && documents::isInstance(model) == documents::Answer::yes) {
      if (const auto generic = documents::immediateGeneric(model))
        next.push_back({generic.value, false});
      else
        core::creoLog(text::format(L"<KVD> The generic of %s can't be used.", name));
    }
    if (flags_.instances && documents::isGeneric(model) == documents::Answer::yes) addInstances(model, next);
    if (flags_.drawings) addDrawings(model, name, next);
    if (flags_.dependents) addDependents(model, next);
  }

  void addInstances(creo::ProMdl generic, std::vector<Step>& next) {
    const auto table = creo::ProFamtableInit(generic);
    if (!table) return failureLine(L"ProFamtableInit");
    const auto visited = creo::ProFamtableInstanceVisit(table.value, [&next](const creo::ProFaminstance& row) {
      if (const auto instance = creo::ProFaminstanceRetrieve(row))
        next.push_back({instance.value, false});
      else
        failureLine(L"ProFaminstanceRetrieve");
      return creo::ProNoError;
    });
    if (visited != creo::ProNoError && visited != creo::ProNotFound) failureLine(L"ProFamtableInstanceVisit");
  }

  // Looked for where Creo looks, and beside the model; most models have none of their name.
  void addDrawings(creo::ProMdl model, const std::wstring& name, std::vector<Step>& next) {
    const auto take = [&] {
      const auto drawing = creo::ProMdlRetrieve(name, creo::ProMdlType::drawing);
      if (drawing) next.push_back({drawing.value, false});
      if (drawing.error != creo::ProNoError && drawing.error != creo::ProNotFound) failureLine(L"ProMdlRetrieve");
      return static_cast<bool>(drawing);
    };
    if (take()) return;
    creo::DirectoryGuard guard;
    if (changeToFolderOf(model, guard)) take();
  }

  void addDependents(creo::ProMdl model, std::vector<Step>& next) {
    const auto used = creo::ProMdlDependenciesList(model);
    if (used.error == creo::ProNotFound) return;  // it uses nothing
    if (!used) return failureLine(L"ProMdlDependenciesList");
    creo::DirectoryGuard guard;
    changeToFolderOf(model, guard);
    for (const creo::ProDependency& dependency : used.value)
      if (dependency.type != creo::ProMdlType::drawing) addDependency(dependency, next, Miss::silent);
  }

  void addUsed(creo::ProMdl model, creo::ProMdlType type, std::vector<Step>& next) {
    if (type == creo::ProMdlType::assembly) {
      const auto used = creo::ProMdlDependenciesList(model);
      if (used.error == creo::ProNotFound) return;
      if (!used) return failureLine(L"ProMdlDependenciesList");
      for (const creo::ProDependency& dependency : used.value) addDependency(dependency, next, Miss::told);
    } else if (type == creo::ProMdlType::drawing) {
      const auto solids = creo::ProDrawingSolidsCollect(model);
      if (!creo::isTold(solids)) return failureLine(L"ProDrawingSolidsCollect");
      for (const creo::ProMdl solid : solids.value) next.push_back({solid, true});
    }
  }

  // A model that was met already, or that has no rows, isn't brought into memory for nothing. Where a miss is silent it
  // is the normal case; other failures are told.
  enum class Miss { told, silent };
  void addDependency(const creo::ProDependency& dependency, std::vector<Step>& next, Miss miss) {
    if (!hasRows(dependency.type) || visited_.contains(rowName(bareName(dependency.name), dependency.type))) return;
    const auto model = creo::ProMdlRetrieve(dependency.name, dependency.type);
    if (model)
      next.push_back({model.value, true});
    else if (miss == Miss::told || model.error != creo::ProNotFound)
      failureLine(L"ProMdlRetrieve");
  }

  const WalkFlags& flags_;
  std::unordered_set<std::string>& visited_;
  std::vector<Frame> frames_;
};

}  // namespace

void walkModels(creo::ProMdl start, const WalkFlags& flags, std::unordered_set<std::string>& visited,
                creo::FunctionRef<void(const WalkedModel&)> leave) {
  Walk(flags, visited).run(start, leave);
}

}  // namespace run
