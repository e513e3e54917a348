// Dissolves a family table into models of their own, from the inside out. Nothing goes before what replaces it has been
// saved: an instance for which a step fails stays in the table, and then the table stays too.
#include <algorithm>

#include "actions/model/family_tables.h"
#include "actions/model/free_name.h"
#include "actions/model/instances.h"
#include "actions/table_file.h"
#include "actions/task.h"
#include "actions/visits.h"
#include "core/log.h"
#include "creo/ProAppearance.h"
#include "creo/ProFaminstance.h"
#include "creo/ProMdl.h"
#include "creo/ProMdlCopy.h"
#include "creo/ProServer.h"
#include "creo/ProUtil.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace creo;

// A longer name is no model's, and the instance would never get it back.
constexpr int kLongestName = 31;
// A body's ids have gaps: surfaces beyond the highest one that is seen may have a look too.
constexpr int kIdsBeyond = 100;

struct BreakUp {
  bool serverActive = false;
  int writeoutCounter = 0;
};

bool breakUp(ProMdl model, BreakUp& state);

bool stays(const ProFaminstance& instance, std::wstring_view why) {
  core::logWrite(text::format(L"The instance '%s' stays in the family table: %s", instance.name, why), core::kError);
  return false;
}

// Saves the copy of an instance, which has a file already. Empty: it is on disk as it is to be; else why not.
std::wstring saveCopy(ProMdl copy, const std::wstring& name, const Got<std::wstring>& commonName) {
  if (commonName && ProMdlCommonnameSet(copy, commonName.value) != ProNoError)
    return L"its copy doesn't take the common name";
  // A first version that lies there is of another time, or the copy's own from before the save; it goes once there is
  // one behind it.
  const auto type = ProMdlTypeGet(copy);
  const auto folder = ProDirectoryCurrentGet();
  const std::wstring old = folder.value + text::lower(name + L'.' + typeExtension(type.value)) + L".1";
  const bool wasThere = folder && os::files().exists(old);
  if (ProMdlSave(copy) != ProNoError) return L"its copy can't be saved";
  const auto saved = ProMdlDataGet(copy);
  if (wasThere && saved && saved.value.version > 1 && os::files().remove(old))
    core::logWrite(L"Failure while delete " + old, core::kWarning);
  return {};
}

// Replaces an instance by a copy on disk. False: it is as it was, and the log says why.
bool writeOut(const ProFaminstance& instance, ProMdl model, BreakUp& state) {
  const auto commonName = ProMdlCommonnameGet(model);
  const auto writeout = renameAside(model, state.writeoutCounter);
  if (!writeout) return stays(instance, L"it can't be renamed");
  std::wstring fault = L"it can't be copied";
  const auto type = ProMdlTypeGet(model);
  const auto replaces = ProMdlnameIsTaken(instance.name, type.value);
  const auto copy = ProMdlCopy(model, instance.name);
  if (copy) {
    const auto file = ProMdlOriginGet(copy.value);
    fault = saveCopy(copy.value, instance.name, commonName);
    if (!fault.empty() && file && os::files().exists(file.value) && os::files().remove(file.value))
      core::logWrite(L"Failure while delete " + file.value, core::kWarning);
  }
  if (fault.empty() && replaces && replaces.value)
    core::logWrite(text::format(L"A model of the name %s.%s was on disk already: the instance replaces it",
                                instance.name, typeExtension(type.value)),
                   core::kWarning);
  if (fault.empty() && ProFaminstanceRemove({writeout.value, instance.owner}) == ProNoError) {
    letGo(copy.value);
    letGo(model);
    return true;
  }
  if (fault.empty()) fault = L"it can't be removed";
  if (copy) eraseAside(copy.value, state.writeoutCounter);
  if (ProMdlRename(model, instance.name) != ProNoError)
    core::logWrite(text::format(L"The instance '%s' is called '%s' now", instance.name, writeout.value), core::kError);
  return stays(instance, fault);
}

void copySurfaceLooks(ProMdl from, ProMdl to) {
  int highest = 0;
  const ProError visited = ProSolidSurfaceVisit(to, [&](const ProSurface& surface) {
    highest = std::max(highest, surface.id);
    return ProNoError;
  });
  isWhole(visited, L"The surfaces");
  for (int id = 0; id <= highest + kIdsBeyond; ++id)
    for (const ProSurfaceSide side : {ProSurfaceSide::outer, ProSurfaceSide::inner})
      if (const auto look = ProSurfaceSideAppearancepropsGet({from, id, nullptr}, side))
        ProSurfaceSideAppearancepropsSet({to, id, nullptr}, side, look.value);
}

void copyLook(ProMdl from, ProMdl to) {
  const auto source = ProMdlToModelitem(from), target = ProMdlToModelitem(to);
  if (!source || !target) return;
  if (const auto look = ProMdlVisibleAppearancepropsGet(source.value))
    ProMdlVisibleAppearancepropsSet(target.value, look.value);
  if (ProMdlTypeGet(to).value == ProMdlType::part) copySurfaceLooks(from, to);
}

// Out of its table the instance is a model of its own, which the server knows by its name. One that can't be saved goes
// back: a later save of the generic would else leave it nowhere.
bool moveOut(const ProFaminstance& instance, ProMdl model, BreakUp& state) {
  if (ProFaminstanceRemove(instance) != ProNoError) return stays(instance, L"it can't be removed");
  copyLook(instance.owner, model);
  if (ProMdlSave(model) == ProNoError) return true;
  eraseAside(model, state.writeoutCounter);  // a row takes no name of a model in memory
  if (ProFaminstanceAdd(instance) == ProNoError) return stays(instance, L"it can't be saved");
  core::logWrite(text::format(L"'%s' can't be saved, and only the saved family table has it", instance.name),
                 core::kError);
  return false;
}

bool breakUpInstance(const ProFaminstance& instance, BreakUp& state) {
  if (text::units(instance.name) > kLongestName) return stays(instance, L"its name is too long");
  const auto model = ProFaminstanceCreate(instance);
  if (!model) return stays(instance, L"it can't be created");
  bool whole = regenerated(model.value) || stays(instance, L"it fails to regenerate");
  if (whole && !breakUp(model.value, state)) whole = stays(instance, L"its own family table has instances left");
  if (whole) return state.serverActive ? moveOut(instance, model.value, state) : writeOut(instance, model.value, state);
  letGo(model.value);
  return false;
}

// False: something is left of the table.
bool breakUp(ProMdl model, BreakUp& state) {
  const auto table = tableOf(model);
  if (!table) return true;
  std::vector<ProFaminstance> instances;
  const ProError visited = ProFamtableInstanceVisit(table.value, [&](const ProFaminstance& instance) {
    instances.push_back(instance);
    return ProNoError;
  });
  if (!isWhole(visited, L"The instances") || instances.empty()) return false;
  core::logIndented(text::format(L"COUNT : %d", static_cast<int>(instances.size())), core::kNormal, 1);
  bool all = true;
  for (const ProFaminstance& instance : instances) all = breakUpInstance(instance, state) && all;
  if (!all) return false;
  if (ProFamtableErase(table.value) != ProNoError) {
    core::logWrite(L"Failure while delete the family table", core::kError);
    return false;
  }
  if (state.serverActive && ProMdlSave(model) != ProNoError)
    core::logWrite(L"Failure while save the generic", core::kError);
  return true;
}

Outcome breakUpFamilytable(const Task& task) {
  if (!tableOf(task.model())) return done;
  stateDensities(task.model());
  BreakUp state{.serverActive = static_cast<bool>(ProServerActiveGet())};
  breakUp(task.model(), state);
  return done;
}

// The copies lie on disk, or the instances in the server's workspace, when the table goes.
constexpr Effects kEffects{
    .reads = Touched::model | Touched::users | Touched::family | Touched::files | Touched::server,
    .changes = Touched::model | Touched::users | Touched::family | Touched::files | Touched::session | Touched::server,
    .takenBack = false};

constexpr Action kActions[] = {
    {.key = L"breakUpFamilytable",
     .place = 45,
     .title = Message::breakUpFamilyTable,
     .effects = kEffects,
     .about = "makes each instance of a generic a model of its own, and takes the family table away",
     .function = &breakUpFamilytable},
};

}  // namespace

std::span<const Action> breakUpActions() { return kActions; }

}  // namespace actions
