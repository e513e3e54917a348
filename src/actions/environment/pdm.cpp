// Models go in and out of the PDM server's workspace. Without an active server or workspace these actions do nothing.
#include "actions/task.h"
#include "core/log.h"
#include "creo/ProMdl.h"
#include "documents/server_workspace.h"
#include "language/variables.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;
// What came of a request: a line where it went well, the server's reasons where something hinders it.
void tell(creo::ProError result, const std::wstring& conflicts, std::wstring_view success, std::wstring_view failure) {
  if (result == creo::ProNoError)
    core::logIndented(success, core::kNormal, 1);
  else
    core::logWrite(result == creo::ProConflicts ? std::wstring_view(conflicts) : failure, core::kError);
}

// The log has one text for both directions.
constexpr std::wstring_view kFailed = L"Failure happend while checkin";

// What is checked in is what was saved, and behind it the model is closed to saves. One that can't be saved anyway has
// its reason from the check-in.
creo::ProError saveChanges(creo::ProMdl model) {
  const auto changed = creo::ProMdlModificationVerify(model);
  const auto open = creo::ProMdlIsModifiable(model, false);
  if (!changed || !open) return changed ? open.error : changed.error;  // the server would be given an older state
  return changed.value && open.value ? creo::ProMdlSave(model) : creo::ProNoError;
}

Outcome checkinModel(const Task& task) {
  if (!documents::activeWorkspace()) return done;
  creo::ProServercheckinopts options;
  if (!task.attribute(L"path").empty()) {
    const Replaced location = task.text(L"path");
    if (!location) {
      core::logWrite(kFailed, core::kError);
      return done;
    }
    options.defaultLocation = location.text;
  }
  std::wstring conflicts;
  auto result = saveChanges(task.model());
  if (result == creo::ProNoError) result = creo::ProServerObjectsCheckin(task.model(), options, conflicts);
  tell(result, conflicts, L"Model checked in", kFailed);
  return done;
}

Outcome checkoutModel(const Task& task) {
  if (!documents::activeWorkspace()) return done;
  creo::ProServercheckoutopts options;
  if (task.attribute(L"instance_level") == L"1") options.includeInstances = creo::ProServerInstances::all;
  std::wstring conflicts;
  const auto result = creo::ProServerObjectsCheckout(task.model(), options, conflicts);
  tell(result, conflicts, L"Model checked out", kFailed);
  return done;
}

Outcome removeModelFromWorkspace(const Task&) {
  if (!documents::activeWorkspace()) return done;
  std::wstring conflicts;
  const auto result = creo::ProServerObjectsRemove(conflicts);
  if (result != creo::ProNoError && result != creo::ProNotFound)
    core::logWrite(conflicts.empty() ? L"The workspace can't be cleared" : std::wstring_view(conflicts), core::kError);
  return done;
}

Outcome addFileToWorkspace(const Task& task) {
  const auto workspace = documents::activeWorkspace();
  if (!workspace) return done;
  const std::wstring source = task.path(L"source", L"models");
  const Replaced primary = task.text(L"primary");
  const std::wstring target = text::format(L"wtws://%s/%s/", workspace.server, workspace.name);
  const auto result = primary ? creo::ProFileCopyToWS(source, target, primary.text) : creo::ProBadInputs;
  if (result == creo::ProNoError)
    core::logIndented(L"ok", core::kNormal, 1);
  else
    core::logWrite(text::format(L"failure while add to workspace / add to primary - %d", static_cast<int>(result)),
                   core::kError);
  if (result == creo::ProConflicts) core::logWrite(primary.text + L" isn't checked out here", core::kError);
  return done;
}

constexpr Attribute kCheckinAttributes[] = {
    {.name = L"path",
     .variables = true,
     .about = "the server's folder for a model that is new there; empty or absent: its own"},
};
constexpr Attribute kCheckoutAttributes[] = {
    {.name = L"instance_level",
     .kind = Kind::word,
     .words = L"0|1",
     .about = "1: all instances of a generic come along"},
};
constexpr Attribute kFileAttributes[] = {
    {.name = L"source",
     .kind = Kind::file,
     .variables = true,
     .need = Need::needed,
     .folder = L"models",
     .about = "the file"},
    {.name = L"primary",
     .variables = true,
     .about = "the object that it is attached to when it is checked in; empty or absent: none"},
};

constexpr Action kActions[] = {
    {.key = L"checkinModel",
     .place = 36,
     .group = Group::modelNeeded,
     .title = L"checkinModel",
     .attributes = kCheckinAttributes,
     .effects = {.reads = Touched::model | Touched::server,
                 .changes = Touched::model | Touched::users | Touched::files | Touched::server,
                 .takenBack = false},
     .about = "saves the model in the workspace and checks it in",
     .function = &checkinModel},
    {.key = L"checkoutModel",
     .place = 38,
     .group = Group::modelNeeded,
     .title = L"checkoutModel",
     .attributes = kCheckoutAttributes,
     .effects = {.reads = Touched::model | Touched::server, .changes = Touched::server, .takenBack = false},
     .about = "checks the model out",
     .function = &checkoutModel},
    {.key = L"removeModelFromWorkspace",
     .place = 10,
     .group = Group::withoutModel,
     .title = L"Clear workspace",
     .effects = {.reads = Touched::server,
                 .changes = Touched::model | Touched::users | Touched::files | Touched::server,
                 .takenBack = false},
     .about = "empties the workspace",
     .function = &removeModelFromWorkspace},
    {.key = L"addFileToWorkspace",
     .place = 81,
     .group = Group::modelNeeded,
     .title = L"Add file to workspace",
     .attributes = kFileAttributes,
     .effects = {.reads = Touched::model | Touched::files | Touched::server,
                 .changes = Touched::files | Touched::server,
                 .takenBack = false},
     .about = "copies a file into the workspace",
     .function = &addFileToWorkspace},
};

}  // namespace

std::span<const Action> pdmActions() { return kActions; }

}  // namespace actions
