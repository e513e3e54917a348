// The frame of the actions that write a model to a file of another format: the target's name, what is there already,
// how it ended.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "actions/action.h"
#include "actions/task.h"
#include "creo/guards.h"

namespace actions {

// What tells one such action from another.
struct ExportForm {
  std::wstring_view extension = {};  // ".pdf", appended to a name that lacks it; empty: names are taken as they are
  std::wstring_view nameAttribute = L"file";
  bool (*carriesExtension)(std::wstring_view name) = nullptr;  // where a name may end otherwise, too; null: only so
};

// The target's whole path, with "/" between folders, from `folder` or `folderFromModel` and the name's attribute.
// Nothing, with an error line: the name is missing or can't be put together.
std::optional<std::wstring> namedTarget(const Task& task, const ExportForm& form);
// The same; nothing, with a warning, also where the file is there already and mayn't be replaced.
std::optional<std::wstring> exportTarget(const Task& task, const ExportForm& form);
// False, with its warning, where the file is there already and `overwriteExisting` isn't "true".
bool mayWrite(const Task& task, const std::wstring& path);
// That the export is complete, a level in, or the failure's message as an error. The task's outcome, which is the same
// for both.
Outcome endExport(creo::ProError result, core::Message failure);

// Small surfaces are exported as long as it lives.
class SmallSurfacesGuard {
 public:
  SmallSurfacesGuard() : option_(L"skip_small_surfaces") { option_.change(L"NO"); }

 private:
  creo::OptionGuard option_;
};

// ---- what rows have in common

constexpr core::Attribute targetFile(std::string_view about, std::wstring_view name = L"file") {
  return {.name = name, .variables = true, .need = core::Need::needed, .about = about};
}
constexpr core::Attribute kTargetFolder{
    .name = L"folder",
    .kind = core::Kind::written,
    .variables = true,
    .about = "the target's folder; one that isn't whole, or is empty, counts from the working folder"};
constexpr core::Attribute kFolderFromModel{.name = L"folderFromModel",
                                           .kind = core::Kind::flag,
                                           .words = L"true",
                                           .about = "the target's folder is the model's; folder isn't read"};
constexpr core::Attribute kOverwriteExisting{
    .name = L"overwriteExisting",
    .kind = core::Kind::flag,
    .words = L"true",
    .about = "a file that is there is replaced; else it stays, with a warning"};
constexpr core::Attribute kTarget[] = {targetFile("the file's name"), kTargetFolder, kFolderFromModel,
                                       kOverwriteExisting};

}  // namespace actions
