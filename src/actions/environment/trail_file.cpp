// Trail files: recorded steps, a line each, that Creo plays.
#include "actions/environment/macro.h"
#include "actions/task.h"
#include "core/log.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/pieces.h"

namespace actions {
namespace {

constexpr std::size_t kPathSize = 520;
// Creo plays a trail file by its own dialog alone.
constexpr std::wstring_view kPlayMacro =
    L"~ Command `ProCmdUtilTrailTrain` ;~ Trail `UI Desktop` `UI Desktop` `DLG_PREVIEW_POST` `file_open`;~ Input "
    L"`file_open` `Inputname` ``;~ Update `file_open` `Inputname` `%s`;~ Trail `UI Desktop` `UI Desktop` "
    L"`PREVIEW_POPUP_TIMER` `file_open:Ph_list.Filelist:<NULL>`;~ Activate `file_open` `Open`;";

Outcome runTrailfile(const Task& task) {
  const std::wstring path = task.path(L"tf", L"models", kPathSize);
  core::logMsgId(Message::runTrailFile, core::kNormal, 1);
  if (!mayPlay(L"play the trail file " + path)) return done;
  // Creo's dialog would stay open over it.
  if (!os::files().exists(path)) {
    core::logWrite(text::format(L"The trail file isn't there: %s", path), core::kError);
    return done;
  }
  runMacro(text::format(kPlayMacro, text::replaceAll(path, L"\\", L"\\\\")), L"The trail file can't be run");
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"tf",
     .kind = Kind::file,
     .variables = true,
     .need = Need::needed,
     .folder = L"models",
     .about = "the file"},
};

constexpr Action kActions[] = {
    {.key = L"runTrailfile",
     .place = 4,
     .group = Group::withoutModel,
     .title = Message::setDtl,  // as ever: that of the action setDTL
     .conditions = {kFilterUnlessForAll},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::files,
                 .changes = Touched::model | Touched::programs,
                 .known = false,
                 .takenBack = false},
     .about = "plays a file of recorded steps",
     .function = &runTrailfile},
};

}  // namespace

std::span<const Action> trailFileActions() { return kActions; }

}  // namespace actions
