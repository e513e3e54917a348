// groupActions on a drawing that is made for them.
#include "actions/environment/group_modes.h"
#include "actions/model/free_name.h"
#include "core/log.h"
#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "creo/ProMdlCopy.h"
#include "creo/guards.h"
#include "language/variables.h"

namespace actions {

using namespace language;

namespace {

// In memory or on disk: saving the new drawing would put it over that one.
bool isThere(const std::wstring& drawing) {
  const auto taken = creo::ProMdlnameIsTaken(drawing, creo::ProMdlType::drawing);
  return !taken || taken.value;
}

}  // namespace

void runOnNewDrawing(const Task& task) {
  constexpr std::size_t kNameSize = 32;
  const Replaced name = task.text(L"drwName", kNameSize);
  const Replaced templateName = task.text(L"tmpName", kNameSize);
  const std::wstring templateFolder = task.path(L"tmpPath", L"models");
  creo::Got<creo::ProMdl> drawing = creo::ProGeneralError;
  creo::DirectoryGuard folder;
  if (name.hasText() && templateName.hasText() && !isThere(name.text)) {
    folder.change(templateFolder);
    drawing = creo::ProDrawingFromTmpltCreate(name.text, templateName.text, task.model(), 0);
    folder.back();
  }
  if (!drawing) return core::logWrite(L"Can't create the Drawing", core::kError);
  core::logIndented(L"Created the Drawing", core::kNormal, 1);
  runTasksOn(task, drawing.value, name.text, L".DRW");
  core::logIndented(L"Erased the Drawing", core::kNormal, 1);
  creo::ProMdlDisplay(task.model());
  eraseMade(drawing.value);
}

}  // namespace actions
