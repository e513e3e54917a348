// The frame of the actions that write a model to a file of another format: the target's name, what is there already,
// how it ended.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "creo/guards.h"
#include "engine/task.h"

namespace actions {

// What tells one such action from another.
struct ExportForm {
  std::wstring_view title, version = L"3";
  std::wstring_view extension = {};  // ".pdf", appended to a name that lacks it; empty: names are taken as they are
  std::wstring_view nameAttribute = L"file";
  bool (*carriesExtension)(std::wstring_view name) = nullptr;  // where a name may end otherwise, too; null: only so
};

// The target's whole path, with "/" between folders.
struct ExportTarget {
  std::optional<engine::Outcome> ended;  // what the action returns: it has no work, or its fault was logged
  std::wstring path;
};
// Title, version and filter, then the target's name from `folder` or `folderFromModel` and the name's attribute. A name
// that is missing or can't be put together ends the action with an error line.
ExportTarget beginNamed(const engine::Task& task, const ExportForm& form);
// The same, and the action ends where the file is there already and mayn't be replaced.
ExportTarget beginExport(const engine::Task& task, const ExportForm& form);
// False, with its warning, where the file is there already and `overwriteExisting` isn't "true".
bool mayWrite(const engine::Task& task, const std::wstring& path);
// Message 228 a level in, or the failure's message as an error. The task's outcome, which is the same for both.
engine::Outcome endExport(creo::ProError result, int failure);

// Small surfaces are exported as long as it lives.
class SmallSurfacesGuard {
 public:
  SmallSurfacesGuard() : option_(L"skip_small_surfaces") { option_.change(L"NO"); }

 private:
  creo::OptionGuard option_;
};

}  // namespace actions
