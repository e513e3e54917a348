// groupActions on each instance of a family table.
#include "actions/environment/group_modes.h"
#include "actions/under_work.h"
#include "actions/visits.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProDrawing.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "documents/predicates.h"

namespace actions {
namespace {

// A part inside a part inside a part: deeper nesting is refused, each level takes its share of the stack.
constexpr int kDeepestTable = 200;

class InstanceVisit {
 public:
  explicit InstanceVisit(const Task& task, std::wstring_view extension)
      : task_(task), extension_(extension), nested_(task.isTrue(L"recsel")) {}

  void run(creo::ProMdl generic, int depth = 0) {
    if (documents::isGeneric(generic) != documents::Answer::yes) return;
    if (depth == kDeepestTable)
      return core::logWrite(L"Family tables nested deeper than 200 levels aren't worked", core::kError);
    const auto table = creo::ProFamtableInit(generic);
    if (!table) return core::logWrite(L"Famtable can't be initialized", core::kError);
    const auto visited = creo::ProFamtableInstanceVisit(table.value, [&](const creo::ProFaminstance& row) {
      work(row, depth);
      return creo::ProNoError;
    });
    isWhole(visited, L"The instances");
  }

 private:
  void work(const creo::ProFaminstance& row, int depth) {
    core::logIndented(row.name, core::kNormal, 1);
    const auto built = creo::ProFaminstanceCreate(row);
    if (!built) return core::logWrite(L"Can't create Instance", core::kError);
    const creo::ProMdl instance = built.value;
    if (nested_) {
      const UnderWork kept(instance);  // its own turn comes behind those of its table
      run(instance, depth + 1);
    }
    const auto name = creo::ProMdlNameGet(instance);
    runTasksOn(task_, instance, name ? name.value : row.name, extension_);
    if (const auto generic = creo::ProFaminstanceGenericGet(instance, true)) creo::ProMdlDisplay(generic.value);
    // A trigger works on what the user has open: nothing of it goes.
    if (core::pluginState().triggerType == 0 && !isUnderWork(instance)) creo::ProMdlErase(instance);
  }

  const Task& task_;
  const std::wstring_view extension_;
  const bool nested_;
};

}  // namespace

void runOnInstances(const Task& task) {
  creo::ProMdl generic = task.model();
  std::wstring_view extension = task.subject().extension;
  if (const auto type = creo::ProMdlTypeGet(generic); type && type.value == creo::ProMdlType::drawing) {
    const auto solid = creo::ProDrawingCurrentsolidGet(generic);
    if (!solid) return core::logWrite(L"The drawing has no current model", core::kWarning);
    generic = solid.value;
    extension = solidExtension(generic);
  }
  InstanceVisit(task, extension).run(generic);
  creo::ProMdlDisplay(task.model());
}

}  // namespace actions
