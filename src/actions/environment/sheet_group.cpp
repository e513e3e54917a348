// A group over the sheets of a drawing.
#include <algorithm>
#include <optional>
#include <set>

#include "actions/dispatch.h"
#include "actions/drawing/sheet_entries.h"
#include "actions/environment/group_modes.h"
#include "actions/visits.h"
#include "core/log.h"
#include "creo/ProDwgtable.h"
#include "creo/ProMdl.h"
#include "creo/guards.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

// A table that is gone when the object goes: it is there to be asked what its cell shows.
class HelperTable {
 public:
  explicit HelperTable(creo::ProMdl drawing) : table_(creo::ProDrawingTableCreate(drawing, {}, {1.0}, {1.0})) {}
  ~HelperTable() {
    if (table_) creo::ProDwgtableDelete(table_.value, false);
  }
  HelperTable(const HelperTable&) = delete;
  HelperTable& operator=(const HelperTable&) = delete;
  // What a form of cells shows as; empty on failure.
  [[nodiscard]] std::wstring shown(const std::wstring& form) const {
    if (!table_ || creo::ProDwgtableTextEnter(table_.value, 1, 1, {form}) != creo::ProNoError) return {};
    const auto lines = creo::ProDwgtableCelltextGet(table_.value, 1, 1, creo::ProDwgtableText::displayed);
    return lines && !lines.value.empty() ? lines.value.front() : std::wstring();
  }

 private:
  creo::Got<creo::ProDwgtable> table_;
};

bool liesOn(const creo::ProDwgtable& table, int sheet) {
  for (const int segment : {0, 1})
    if (const auto on = creo::ProDwgtableSegSheetGet(table, segment); on && on.value == sheet) return true;
  return false;
}

// The numbers of the models that the tables of a sheet refer to; none, with an error line, where not all were visited.
std::set<int> numbersOnSheet(creo::ProMdl drawing, int sheet) {
  std::set<int> numbers;
  const creo::ProError visited = creo::ProDrawingTableVisit(drawing, [&](const creo::ProDwgtable& table) {
    if (!liesOn(table, sheet)) return creo::ProNoError;
    for (const int number : listOrNone(creo::ProDwgtableRegionModelsGet(table), L"The models of a table"))
      numbers.insert(number);
    return creo::ProNoError;
  });
  if (!isWhole(visited, L"The tables of the drawing")) numbers.clear();
  return numbers;
}

bool isOfType(creo::ProMdl solid, std::wstring_view word) {
  const auto type = creo::ProMdlTypeGet(solid);
  return type && ((type.value == creo::ProMdlType::part && word == L"PART") ||
                  (type.value == creo::ProMdlType::assembly && word == L"ASSEM"));
}

std::optional<creo::ProMdl> numberedSolid(creo::ProMdl drawing, const std::vector<creo::ProMdl>& solids, int number) {
  const HelperTable helper(drawing);
  const std::wstring name = helper.shown(text::format(L"&model_name:%d", number));
  const std::wstring type = helper.shown(text::format(L"&type:%d", number));
  const auto found = std::find_if(solids.begin(), solids.end(), [&](creo::ProMdl solid) {
    const auto own = creo::ProMdlNameGet(solid);
    return own && text::equalNoCase(own.value, name) && isOfType(solid, type);
  });
  return found == solids.end() ? std::nullopt : std::optional(*found);
}

std::optional<creo::ProMdl> solidOfSheet(creo::ProMdl drawing, int sheet) {
  const auto solids = creo::ProDrawingSolidsCollect(drawing);
  if (!solids || solids.value.empty()) {
    core::logIndented(L"No Model found", core::kNormal, 1);
    return std::nullopt;
  }
  if (solids.value.size() == 1) {
    core::logIndented(L"One Model found", core::kNormal, 1);
    return solids.value.front();
  }
  core::logIndented(L"More Models found", core::kNormal, 1);
  core::logIndented(L"- search in frames", core::kNormal, 1);
  const std::set<int> numbers = numbersOnSheet(drawing, sheet);
  if (numbers.size() != 1) {
    core::logWrite(L"Found multiple possible models", core::kWarning);
    return std::nullopt;
  }
  core::logIndented(L"Found a single model that should be the right one", core::kNormal, 1);
  return numberedSolid(drawing, solids.value, *numbers.begin());
}

// The sheet is the drawing's current one.
void runOnSheet(const Task& task, int sheet) {
  const creo::ProMdl drawing = task.model();
  creo::SolidGuard current(drawing);
  const auto solid = solidOfSheet(drawing, sheet);
  if (solid) {
    const auto name = creo::ProMdlNameGet(*solid);
    core::logIndented(name.value, core::kNormal, 2);
    if (current.change(*solid) != creo::ProNoError) {
      core::logWrite(text::format(L"Can't make %s the current model", name.value), core::kError);
      return;
    }
  } else if (!task.isTrue(L"framelessSheets")) {
    core::logWrite(L"No model found", core::kError);
    return;
  }
  runSubtasks(task.node(), task.subject());
}

}  // namespace

void runEachSheet(const Task& task) {
  const auto type = creo::ProMdlTypeGet(task.model());
  if (!type || type.value != creo::ProMdlType::drawing) return;
  creo::SheetGuard current(task.model());
  const int count = sheetCount(task.model());
  for (int sheet = 1; sheet <= count; ++sheet) {
    core::logIndented(text::format(L"Sheet - %d", sheet), core::kNormal, 1);
    if (current.change(sheet) == creo::ProNoError)
      runOnSheet(task, sheet);
    else
      core::logWrite(text::format(L"Can't make sheet %d the current one", sheet), core::kError);
  }
}

}  // namespace actions
