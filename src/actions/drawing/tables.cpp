// Tables on the sheets of drawings: brought from files, found by place or text, moved, deleted.
#include "actions/drawing/details.h"
#include "actions/drawing/table_finder.h"
#include "actions/on_top.h"
#include "actions/visits.h"
#include "creo/ProMdl.h"
#include "creo/guards.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using creo::ProDwgtable;
using creo::ProMdl;

constexpr std::wstring_view kTableDirectory = L"@pro_table_dir@";

// ---- new tables

// Makes the folder of stored tables the working folder and gives it in full. Nothing, with a line: it isn't there.
std::optional<std::wstring> tableFolder(const Task& task, creo::DirectoryGuard& working) {
  const std::wstring_view given = task.attribute(L"tablepath");
  std::wstring folder;
  if (!given.empty() && given != kTableDirectory) {
    folder = task.path(L"tablepath", L"models");
    sayDetail(folder);
  } else {
    sayDetail(L"Insert from PRO_TABLE_DIR");
    const auto option = creo::ProConfigoptGet(L"PRO_TABLE_DIR");
    if (!creo::isTold(option)) {
      cantRead(L"The option PRO_TABLE_DIR");
      return std::nullopt;
    }
    folder = option.value;
  }
  // Where the option isn't set Creo takes the working folder; a folder that has gone must not become another one.
  if (!folder.empty() && working.change(folder) != creo::ProNoError) {
    failDetail(text::format(L"Can't set path as current path: %s", folder));
    return std::nullopt;
  }
  const auto whole = creo::ProDirectoryCurrentGet();
  if (!whole) cantRead(L"The working folder");
  return whole ? std::optional(whole.value) : std::nullopt;
}

// As Creo has it: "title.tbl" is the table "title".
std::wstring tableName(const Task& task) {
  constexpr std::wstring_view kEnding = L".tbl";
  std::wstring_view name = task.attribute(L"tablename");
  if (name.size() > kEnding.size() && text::equalNoCase(name.substr(name.size() - kEnding.size()), kEnding))
    name.remove_suffix(kEnding.size());
  return std::wstring(name);
}

// Puts a table that was just retrieved where the entry wants it, and shows it.
void placeTable(const ProDwgtable& table, const creo::ProPoint& place) {
  const PlacedSegment segment = placedSegment(table);
  if (!creo::ProDwgtableInfoGet(table, segment.number)) return failDetail(L"Can't get Table info");
  if (creo::ProDwgtableSegMove(table, segment.number, place, true) != creo::ProNoError)
    failDetail(L"Can't move table segment");
  tellResult(creo::ProDwgtableDisplay(table), L"Table is retrieved and displayed", L"Table is can't be displayed");
}

void addTableOn(const Task& task, const std::wstring& folder, const SheetEntry& entry, int sheet) {
  const auto given = placeOf(task, entry, L"posx_", L"posy_", SheetWork::adding);
  const auto frame = given ? sheetFrame(task.model(), sheet) : std::nullopt;
  if (!frame) return;
  const creo::ProPoint place = fromEdges(*frame, *given);
  const auto origin = creo::ProPntTrfEval(place, creo::inverseOf(frame->matrix));
  if (!origin)
    return failDetail(text::format(L"posx_%d, posy_%d is no place on sheet %d", entry.number, entry.number, sheet));
  const auto table =
      creo::ProDwgtableRetrieve(task.model(), tableName(task), folder, creo::kAnyTableVersion, origin.value);
  if (!table)
    return failDetail(text::format(L"Failure while retrieving the table : %d", static_cast<int>(table.error)));
  placeTable(table.value, toDrawing(*frame, place));
}

void addTables(const Task& task, const std::wstring& folder) {
  const int sheets = sheetCount(task.model());
  creo::SheetGuard current(task.model());
  for (const SheetEntry& entry : sheetEntries(task, {L"posx_"}))
    for (int sheet = 1; sheet <= sheets; ++sheet) {
      if (!isForSheet(task, entry, sheet, SheetWork::adding)) continue;
      if (!turnsTo(current, sheet)) continue;
      sayDetail(text::format(L"Sheet %d is worked", sheet));
      addTableOn(task, folder, entry, sheet);
    }
}

bool isDrawing(ProMdl model) {
  return valueOrNone(creo::ProMdlTypeGet(model), L"The type of the model") == creo::ProMdlType::drawing;
}

// Texts of repeat regions follow what the drawing shows now. Of other models Creo is asked, too, and refuses.
void updateTables(ProMdl model) {
  const creo::ProError result = inCurrentWindow(model, [&] { return creo::ProDrawingTablesUpdate(model); });
  if (result != creo::ProNoError && isDrawing(model)) failDetail(L"The tables of the drawing can't be updated");
}

// Looks for the folder on every model.
Outcome addTable(const Task& task) {
  creo::DirectoryGuard working;
  const auto folder = tableFolder(task, working);
  if (folder && isDrawing(task.model())) addTables(task, *folder);
  working.back();
  updateTables(task.model());
  return done;
}

// ---- tables that are there

// What is done with a table that an entry found on a sheet.
using TableWork = creo::FunctionRef<void(const SheetFrame&, const SheetEntry&, const ProDwgtable&, int segment)>;

// Whether an entry looks at tables of that sheet while the drawing's sheet `current` is worked.
using LooksAt = bool (*)(const SheetEntry& entry, int tableSheet, int current);

void eachFoundTable(const Task& task, std::initializer_list<std::wstring_view> stems, SheetNumbers numbers,
                    LooksAt looksAt, TableWork work) {
  const auto body = [&](const SheetFrame& frame, const SheetEntry& entry) {
    const TableFinder finder(task, entry, frame);
    if (finder.isIdle()) return;
    const auto tables = creo::ProDrawingTablesCollect(task.model());
    if (!creo::isTold(tables)) failDetail(L"The tables of the drawing can't be read");
    for (const ProDwgtable& table : tables.value) {
      const PlacedSegment segment = placedSegment(table);
      if (!segment.sheet || !looksAt(entry, segment.sheet.value, frame.sheet)) continue;
      if (!finder.finds(table, segment)) continue;
      sayDetail(L"found a table");
      work(frame, entry, table, segment.number);
    }
  };
  eachSheetAndEntry(task, stems, numbers, body);
}

Outcome moveTable(const Task& task) {
  const auto lieThere = [](const SheetEntry&, int tableSheet, int current) { return tableSheet == current; };
  eachFoundTable(task, {L"nposx_"}, {.replaced = false, .zeroIsAll = false}, lieThere,
                 [&](const SheetFrame& frame, const SheetEntry& entry, const ProDwgtable& table, int segment) {
                   const auto place = newPlace(task, entry, frame);
                   if (!place) return;
                   tellResult(creo::ProDwgtableSegMove(table, segment, *place, true), L"Table is moved",
                              L"Can't move the table");
                 });
  return done;
}

Outcome deleteTable(const Task& task) {
  const auto named = [](const SheetEntry& entry, int tableSheet, int) {
    return !entry.sheet || *entry.sheet == tableSheet;
  };
  eachFoundTable(task, {L"posx_", L"text_"}, {.replaced = false, .zeroIsAll = true}, named,
                 [&](const SheetFrame&, const SheetEntry&, const ProDwgtable& table, int) {
                   creo::ProDwgtableErase(table);
                   const creo::ProError result = creo::ProDwgtableDelete(table, false);
                   if (result != creo::ProNoError) creo::ProDwgtableDisplay(table);  // it stays, and is seen
                   tellResult(result, L"Table is deleted", L"Can't delete the table");
                 });
  return done;
}

// ---- rows

constexpr Attribute kTable[] = {
    {.name = L"tablename", .need = Need::needed, .about = "the table's name, with or without .tbl"},
    {.name = L"tablepath",
     .kind = Kind::folder,
     .variables = true,
     .folder = L"models",
     .about = "its folder; empty or @pro_table_dir@: that of the option, or the working folder"},
};
constexpr Attribute kCell[] = {
    {.name = L"text_%d",
     .kind = Kind::pattern,
     .need = Need::oneOf,
     .about = "or a line of a cell that they have, as the sheet shows it"},
    {.name = L"textc_%d", .about = "with text: the cell's column from 1, or * for all"},
    {.name = L"textr_%d", .about = "with text: its row, in the same way"},
};
constexpr Attribute kSheetOfMoved[] = {
    {.name = L"sheet_%d",
     .kind = Kind::integer,
     .about = "the number of the sheet; absent, empty or -1: all sheets, 0: none"},
};
constexpr Attribute kSheetOfDeleted[] = {
    {.name = L"sheet_%d",
     .kind = Kind::integer,
     .about = "the number of the sheet; absent, empty, 0 or -1: all sheets"},
};
constexpr auto kAddAttributes = joined(kTable, kPlaceOfNew, kSheet);
constexpr auto kMoveAttributes = joined(kWantedPlace, kCell, kWantedFormat, kSheetOfMoved, kNewPlace);
constexpr auto kDeleteAttributes = joined(kWantedPlace, kCell, kWantedFormat, kSheetOfDeleted);

constexpr Action kActions[] = {
    {.key = L"addTable",
     .place = 67,
     .title = L"Add table",
     .attributes = kAddAttributes,
     .effects = {.reads = Touched::model | Touched::files | Touched::options,
                 .changes = Touched::model | Touched::session},
     .about = "brings a stored table onto sheets of a drawing",
     .function = &addTable},
    {.key = L"moveTable",
     .place = 68,
     .title = L"Move table",
     .conditions = kOnDrawings,
     .attributes = kMoveAttributes,
     .effects = {.changes = Touched::model},
     .about = "moves tables of a drawing on their sheet",
     .function = &moveTable},
    {.key = L"deleteTable",
     .place = 69,
     .title = L"Delete table",
     .conditions = kOnDrawings,
     .attributes = kDeleteAttributes,
     .effects = {.changes = Touched::model},
     .about = "deletes tables of a drawing that stand at a place or have a text in a cell",
     .function = &deleteTable},
};

}  // namespace

std::span<const Action> drawingTableActions() { return kActions; }

}  // namespace actions
