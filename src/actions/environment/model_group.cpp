// groupActions on a model that is named.
#include <algorithm>
#include <optional>
#include <string>

#include "actions/environment/group_modes.h"
#include "actions/model/free_name.h"
#include "actions/output_file.h"
#include "core/log.h"
#include "creo/ProIntfimport.h"
#include "creo/ProMdl.h"
#include "language/variables.h"
#include "os/paths.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace language;
// What the ending of a name says about the file.
struct Ending {
  std::wstring_view text;
  creo::ProMdlType type = creo::ProMdlType::unused;  // unused: a file of another system
  std::wstring_view extension = {};
  creo::ProIntfType file = {};  // of another system
};
constexpr Ending kEndings[] = {
    {L".PRT", creo::ProMdlType::part, L"PRT"},
    {L".ASM", creo::ProMdlType::assembly, L"ASM"},
    {L".DRW", creo::ProMdlType::drawing, L"DRW"},
    {L".STEP", creo::ProMdlType::unused, {}, creo::ProIntfType::step},
    {L".STP", creo::ProMdlType::unused, {}, creo::ProIntfType::step},
    {L".IGES", creo::ProMdlType::unused, {}, creo::ProIntfType::iges},
    {L".IGS", creo::ProMdlType::unused, {}, creo::ProIntfType::iges},
};

const Ending* endingOf(std::wstring_view name) {
  const std::wstring upper = text::upper(name);
  const auto* found = std::find_if(std::begin(kEndings), std::end(kEndings),
                                   [&](const Ending& ending) { return upper.ends_with(ending.text); });
  return found == std::end(kEndings) ? nullptr : found;
}

void removeFromSession(const Task& task, creo::ProMdl model, bool isImported) {
  const std::wstring_view how = task.attribute(L"removeFromSession");
  // What a group works on stays, whatever the list says.
  const auto fails = [model](creo::ProError (*erase)(creo::ProMdl)) {
    return isUnderWork(model) || erase(model) != creo::ProNoError;
  };
  if (how == L"1" && fails(isImported ? &eraseMade : &creo::ProMdlErase))
    core::logWrite(L"Can't erase the model", core::kNormal);
  if (how == L"2" && fails(&creo::ProMdlEraseAll))
    core::logWrite(L"Can't erase the model and all dependencies", core::kNormal);
}

// The model that the tasks run on, as they are told it.
struct OtherModel {
  creo::ProMdl model;
  std::wstring name;
  std::wstring_view extension;
};

std::optional<OtherModel> retrieve(const std::wstring& file, const Ending& ending) {
  const std::wstring name = file.substr(0, file.size() - ending.text.size());
  const auto model = creo::ProMdlRetrieve(name, ending.type);
  if (!model) {
    core::logWrite(L"Can't load model", core::kError);
    return std::nullopt;
  }
  return OtherModel{model.value, name.substr(0, name.find(L'.')), ending.extension};
}

std::optional<OtherModel> import(const Task& task, const std::wstring& file, const Ending& ending) {
  const std::wstring_view wanted = task.attribute(L"otherMdlType");
  const creo::ProMdlType type = wanted == L"ASM"   ? creo::ProMdlType::assembly
                                : wanted == L"DRW" ? creo::ProMdlType::drawing
                                                   : creo::ProMdlType::part;
  std::wstring name = os::nameOf(file);
  name.resize(std::min(name.size(), name.find(L'.')));
  const auto model = creo::ProIntfimportModelWithOptionsCreate(wholePath(file), ending.file, type, name);
  if (!model) {
    core::logWrite(text::format(L"%d", static_cast<int>(model.error)), core::kError);
    core::logWrite(L"Can't load model", core::kError);
    core::logWrite(L"The file that isn't imported: " + file, core::kError);
    return std::nullopt;
  }
  return OtherModel{model.value, std::move(name), creo::typeExtension(type)};
}

}  // namespace

void runOnOtherModel(const Task& task) {
  const Replaced file = task.text(L"mdlname");
  if (!file.hasText()) return;
  const Ending* ending = endingOf(file.text);
  if (!ending) return core::logWrite(L"Model type not supported", core::kError);
  const bool isForeign = ending->type == creo::ProMdlType::unused;
  const auto other = isForeign ? import(task, file.text, *ending) : retrieve(file.text, *ending);
  if (!other) return;
  runTasksOn(task, other->model, other->name, other->extension);
  if (task.model()) creo::ProMdlDisplay(task.model());
  removeFromSession(task, other->model, isForeign);
}

}  // namespace actions
