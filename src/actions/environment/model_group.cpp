// groupActions on a model that is named.
#include <algorithm>

#include "actions/environment/group_modes.h"
#include "core/log.h"
#include "creo/ProMdl.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace engine;

// What the ending of a name says about the file.
struct Ending {
  std::wstring_view text;
  creo::ProMdlType type = creo::ProMdlType::unused;  // unused: a file of another system
  std::wstring_view extension = {};
};
constexpr Ending kEndings[] = {
    {L".PRT", creo::ProMdlType::part, L"PRT"},
    {L".ASM", creo::ProMdlType::assembly, L"ASM"},
    {L".DRW", creo::ProMdlType::drawing, L"DRW"},
    {L".STEP"},
    {L".STP"},
    {L".IGES"},
    {L".IGS"},
};

const Ending* endingOf(std::wstring_view name) {
  const std::wstring upper = text::upper(name);
  const auto* found = std::find_if(std::begin(kEndings), std::end(kEndings),
                                   [&](const Ending& one) { return upper.ends_with(one.text); });
  return found == std::end(kEndings) ? nullptr : found;
}

void removeFromSession(const Task& task, creo::ProMdl model) {
  const std::wstring_view how = task.attribute(L"removeFromSession");
  // What a group works on stays, whatever the list says.
  const auto fails = [model](creo::ProError (*erase)(creo::ProMdl)) {
    return isUnderWork(model) || erase(model) != creo::ProNoError;
  };
  if (how == L"1" && fails(&creo::ProMdlErase)) core::logWrite(L"Can't erase the model", core::kNormal);
  if (how == L"2" && fails(&creo::ProMdlEraseAll))
    core::logWrite(L"Can't erase the model and all dependencies", core::kNormal);
}

}  // namespace

void runOnOtherModel(const Task& task) {
  const Replaced file = task.text(L"mdlname");
  if (!file.hasText()) return;
  const Ending* ending = endingOf(file.text);
  if (!ending) return core::logWrite(L"Model type not supported", core::kError);
  if (ending->type == creo::ProMdlType::unused)
    return core::logWrite(text::format(L"groupActions: this version doesn't import %s", file.text), core::kError);
  const std::wstring name = file.text.substr(0, file.text.size() - ending->text.size());
  const auto model = creo::ProMdlRetrieve(name, ending->type);
  if (!model) return core::logWrite(L"Can't load model", core::kError);
  runTasksOn(task, model.value, name.substr(0, name.find(L'.')), ending->extension);
  if (task.model()) creo::ProMdlDisplay(task.model());
  removeFromSession(task, model.value);
}

}  // namespace actions
