// Creo's session as a whole: its windows, its memory, its server.
#include "actions/environment/shown_models.h"
#include "actions/task.h"
#include "core/log.h"
#include "creo/ProMdl.h"
#include "creo/ProServer.h"
#include "text/format.h"

namespace actions {
namespace {

// Lists that were written for another program hold it.
Outcome clearAllWindows(const Task&) {
  core::logMsgPlain(Message::senselessInPlayer, core::kWarning);
  return done;
}

Outcome eraseUndisplayedModels(const Task&) {
  // A model that an action is still to work on would be lost with what was changed in it.
  if (const auto goes = keepModelsUnderWork()) {
    core::logWrite(
        text::format(L"Undisplayed models aren't erased: %s.%s is under work and stands in no window",
                     creo::ProMdlNameGet(*goes).value, creo::typeExtension(creo::ProMdlTypeGet(*goes).value)),
        core::kError);
    return done;
  }
  // Creo refuses once where a model that it erases was still in use by one that it erases later.
  if (creo::ProMdlEraseNotDisplayed() != creo::ProNoError && creo::ProMdlEraseNotDisplayed() != creo::ProNoError)
    core::logWrite(L"Can't erase undisplayed models", core::kError);
  return done;
}

Outcome setServerActive(const Task& task) {
  const creo::ProError result = creo::ProServerActivate(std::wstring(task.attribute(L"name")));
  if (result == creo::ProNoError)
    core::logIndented(L"Server activated", core::kNormal, 1);
  else if (result == creo::ProNotFound)
    core::logWrite(L"Server no found", core::kError);
  else
    core::logWrite(L"Error while searching for the server", core::kError);
  return done;
}

constexpr Attribute kServerAttributes[] = {
    {.name = L"name", .need = Need::needed, .about = "the name under which Creo knows the server"},
};

constexpr Action kActions[] = {
    {.key = L"clearAllWindows",
     .place = 0,
     .group = Group::withoutModel,
     .title = Message::clearWindows,
     .conditions = {kNoFilter},
     .effects = {.reads = Touched::nothing},
     .about = "does nothing but write a warning",
     .function = &clearAllWindows},
    {.key = L"eraseUndisplayedModels",
     .place = 1,
     .group = Group::withoutModel,
     .title = Message::eraseUndisplayedModels,
     .conditions = {kNoFilter},
     .effects = {.reads = Touched::model | Touched::users | Touched::family | Touched::session,
                 .changes = Touched::session,
                 .takenBack = false},
     .about = "takes the models out of memory that no window needs",
     .function = &eraseUndisplayedModels},
    {.key = L"setServerActive",
     .place = 15,
     .group = Group::withoutModel,
     .title = L"Set server active",
     .attributes = kServerAttributes,
     .effects = {.reads = Touched::server, .changes = Touched::server, .takenBack = false},
     .about = "makes a PDM server the active one",
     .function = &setServerActive},
};

}  // namespace

std::span<const Action> sessionActions() { return kActions; }

}  // namespace actions
