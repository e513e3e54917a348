// The materials of parts, for the actions on them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/task.h"
#include "creo/ProFamtable.h"
#include "creo/ProTypes.h"
#include "creo/guards.h"

namespace actions {

// The current material as an owner of parameters. Nothing, with a line of that level: the part has none.
std::optional<creo::ProModelitem> currentMaterial(creo::ProMdl part, int level);

// Of actions that change what materials a part holds: what is no part is refused.
constexpr Condition kOnlyParts{.test = Test::part, .line = L"Only parts have materials"};

// "d:\materials\" and "STEEL.mtl", "STEEL" of a path. file has the ending only where the path has one.
struct MaterialPath {
  std::wstring folder, file, name;
};
MaterialPath materialPath(std::wstring_view path);

// The names of the part's materials. Nothing, with an error line: Creo doesn't tell them.
std::optional<std::vector<std::wstring>> materialsOf(creo::ProMdl part);
bool isAmong(const std::vector<std::wstring>& names, std::wstring_view name);
// Case-blind; false without a current material. Nothing, with an error line: Creo doesn't tell.
std::optional<bool> isCurrentMaterial(creo::ProMdl part, std::wstring_view name);

// Where Creo looks for material files while an action works.
class MaterialFolder {
 public:
  MaterialFolder();
  // False, with an error line: it can't be changed.
  bool change(const std::wstring& folder);
  // The folders that the option has named before.
  [[nodiscard]] const std::vector<std::wstring>& before() const { return option_.saved(); }
  // Gives the option its former values back, with an error line where Creo refuses one.
  ~MaterialFolder();
  MaterialFolder(const MaterialFolder&) = delete;
  MaterialFolder& operator=(const MaterialFolder&) = delete;

 private:
  creo::OptionGuard option_;
};

// The column of a family table that says which material an instance is made of.
creo::ProFamtableItem materialColumn();
// Each instance of a part's table and of those below it, the rows of a table before those of the next. False: not all
// of them could be looked at.
bool eachInstance(creo::ProMdl generic, creo::FunctionRef<void(const creo::ProFaminstance& instance)> visit);
// The materials that instances have for themselves, also through a row above. Nothing where not all can be told.
std::optional<std::vector<std::wstring>> materialsOfInstances(creo::ProMdl generic);

}  // namespace actions
