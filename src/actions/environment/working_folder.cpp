// Creo's working folder.
#include "actions/families.h"
#include "core/log.h"
#include "creo/ProUtil.h"
#include "engine/task.h"

namespace actions {
namespace {

using namespace engine;

// Unlike other actions it leaves its change standing: later actions and the user work in the new folder.
Outcome setWorkingDirectory(const Task& task) {
  if (const auto ended = beginUnfiltered(task, {.title = L"Set working directory"})) return *ended;
  std::wstring path(task.attribute(L"path"));
  if (task.model()) {
    if (const auto ended = passFilter(task)) return *ended;
    path = task.path(L"path", L"models");
  } else {
    core::logWrite(L"Set working directory without model. !!No variable replacements!!", core::kWarning);
    core::countAction();
  }
  if (creo::ProDirectoryChange(path) != creo::ProNoError)
    core::logWrite(L"Can't set path as current path", core::kError);
  return done;
}

constexpr ActionFunction kActions[] = {{L"setWorkingDirectory", &setWorkingDirectory}};

}  // namespace

std::span<const ActionFunction> workingFolderActions() { return kActions; }

}  // namespace actions
