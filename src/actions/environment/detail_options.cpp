// The settings of a drawing's own, from a file.
#include "actions/task.h"
#include "core/log.h"
#include "creo/ProMacro.h"
#include "creo/guards.h"
#include "os/paths.h"

namespace actions {
namespace {

// Creo may ask before it takes the options over; waiting steps answer its dialog.
constexpr const wchar_t* kAnswer =
    L"~Activate `UI Message Dialog` `UI Message Dialog`;~Activate `UI Message Dialog` `ok`;";

Outcome setDetailOptions(const Task& task) {
  const std::wstring path = task.path(L"view", L"models");
  const std::wstring folder = os::folderOf(path);
  creo::DirectoryGuard directory;
  // In another folder a file of that name would be another one.
  if (!folder.empty() && directory.change(folder) != creo::ProNoError) {
    core::logWrite(L"Can't set path as current path", core::kError);
    return done;
  }
  creo::ProMacroLoad(kAnswer);
  const creo::ProError read =
      creo::ProInputFileRead(task.model(), os::nameOf(path), creo::ProInputFileType::detailOptions);
  if (read == creo::ProNoError)
    core::logMsgId(Message::dtlSet, core::kNormal, 1);
  else
    core::logMsgPlain(Message::dtlNotSet, core::kError);
  if (directory.back() != creo::ProNoError) core::logWrite(L"Can't reset old path", core::kWarning);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"view",
     .kind = Kind::file,
     .variables = true,
     .need = Need::needed,
     .folder = L"models",
     .about = "the file"},
};

constexpr Action kActions[] = {
    {.key = L"setDTL",
     .place = 33,
     .group = Group::modelNeeded,
     .title = Message::setDtl,
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::files, .changes = Touched::model | Touched::session},
     .about = "reads a file of detail options into a drawing",
     .function = &setDetailOptions},
};

}  // namespace

std::span<const Action> detailOptionActions() { return kActions; }

}  // namespace actions
