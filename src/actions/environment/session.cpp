// Creo's session as a whole: its windows, its memory, its server.
#include "actions/environment/shown_models.h"
#include "actions/families.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "creo/ProServer.h"
#include "engine/task.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace engine;

constexpr int kClearTitle = 115, kEraseTitle = 116, kSenseless = 117;

// Lists that were written for another program hold it.
Outcome clearAllWindows(const Task& task) {
  if (const auto ended = beginUnfiltered(task, {.title = core::msgText(kClearTitle)})) return *ended;
  core::countAction();
  core::logMsgPlain(kSenseless, core::kWarning);
  return done;
}

Outcome eraseUndisplayedModels(const Task& task) {
  if (const auto ended = beginUnfiltered(task, {.title = core::msgText(kEraseTitle)})) return *ended;
  core::countAction();
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
  if (const auto ended = begin(task, {.title = L"Set server active"})) return *ended;
  const creo::ProError result = creo::ProServerActivate(std::wstring(task.attribute(L"name")));
  if (result == creo::ProNoError)
    core::logIndented(L"Server activated", core::kNormal, 1);
  else if (result == creo::ProNotFound)
    core::logWrite(L"Server no found", core::kError);
  else
    core::logWrite(L"Error while searching for the server", core::kError);
  return done;
}

constexpr ActionFunction kActions[] = {{L"clearAllWindows", &clearAllWindows},
                                       {L"eraseUndisplayedModels", &eraseUndisplayedModels},
                                       {L"setServerActive", &setServerActive}};

}  // namespace

std::span<const ActionFunction> sessionActions() { return kActions; }

}  // namespace actions
