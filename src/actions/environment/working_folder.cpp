// Creo's working folder.
#include "actions/task.h"
#include "core/log.h"
#include "creo/ProUtil.h"

namespace actions {
namespace {

// Unlike other actions it leaves its change standing: later actions and the user work in the new folder.
Outcome setWorkingDirectory(const Task& task) {
  std::wstring path(task.attribute(L"path"));
  if (task.model())
    path = task.path(L"path", L"models");
  else
    core::logWrite(L"Set working directory without model. !!No variable replacements!!", core::kWarning);
  if (creo::ProDirectoryChange(path) != creo::ProNoError)
    core::logWrite(L"Can't set path as current path", core::kError);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"path",
     .kind = Kind::folder,
     .variables = true,
     .need = Need::needed,
     .folder = L"models",
     .about = "the folder; taken as it stands where there is no model"},
};

constexpr Action kActions[] = {
    {.key = L"setWorkingDirectory",
     .place = 9,
     .group = Group::withoutModel,
     .title = L"Set working directory",
     .conditions = {kFilterWithModel},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::session, .changes = Touched::session},
     .about = "changes Creo's working folder, for good",
     .function = &setWorkingDirectory},
};

}  // namespace

std::span<const Action> workingFolderActions() { return kActions; }

}  // namespace actions
