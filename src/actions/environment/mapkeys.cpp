// Mapkeys: macros that the list holds line by line, run once or for each of several things.
#include "actions/drawing/sheet_entries.h"
#include "actions/environment/macro.h"
#include "actions/task.h"
#include "actions/visits.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawingView.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "creo/guards.h"
#include "documents/predicates.h"
#include "text/format.h"

namespace actions {
namespace {

constexpr int kDeepestTable = 200;  // family tables nested deeper aren't worked

bool isDrawing(creo::ProMdl model) {
  const auto type = creo::ProMdlTypeGet(model);
  return type && type.value == creo::ProMdlType::drawing;
}

void runOnce(const Task& task) { runMapkeyMacro(task, task.model()); }

void runForSheets(const Task& task) {
  if (!isDrawing(task.model())) return core::logMsgPlain(Message::mapkeyNeedsDrawing, core::kError);
  creo::SheetGuard sheets(task.model());
  const int count = sheetCount(task.model());
  for (int sheet = 1; sheet <= count; ++sheet) {
    core::logIndented(text::format(core::msgText(Message::forSheet), sheet), core::kNormal, 2);
    if (sheets.change(sheet) == creo::ProNoError)
      runMapkeyMacro(task, task.model());
    else
      core::logWrite(text::format(L"The sheet %d can't be made current", sheet), core::kError);
  }
}

void runForTable(const Task& task, creo::ProMdl generic, int depth) {
  if (depth == kDeepestTable)
    return core::logWrite(text::format(L"Family tables nested deeper than %d levels aren't worked", kDeepestTable),
                          core::kError);
  const auto table = creo::ProFamtableInit(generic);
  if (!table) return core::logWrite(L"Famtable can't be initialized", core::kError);
  const auto visited = creo::ProFamtableInstanceVisit(table.value, [&](const creo::ProFaminstance& row) {
    core::logIndented(text::format(core::msgText(Message::reworkInstance), row.name), core::kNormal, 2);
    const auto instance = creo::ProFaminstanceCreate(row);
    if (!instance) {
      core::logWrite(L"Can't create Instance", core::kError);
      return creo::ProNoError;
    }
    runMapkeyMacro(task, instance.value);
    if (documents::isGeneric(instance.value) == documents::Answer::yes) runForTable(task, instance.value, depth + 1);
    return creo::ProNoError;
  });
  isWhole(visited, L"The instances");
}

void runForInstances(const Task& task) {
  creo::ProMdl model = task.model();
  if (isDrawing(model)) {
    const auto solid = creo::ProDrawingCurrentsolidGet(model);
    if (!solid) return core::logWrite(L"No current solid found", core::kError);
    model = solid.value;
  }
  const auto type = creo::ProMdlTypeGet(model);
  if (!type || (type.value != creo::ProMdlType::part && type.value != creo::ProMdlType::assembly))
    return core::logWrite(L"The model filetype is not supported right now", core::kError);
  if (documents::isGeneric(model) != documents::Answer::yes)
    return core::logWrite(L"Current model is no generic", core::kError);
  runForTable(task, model, 0);
}

// The tree beside the drawing selects the view, as a person does; no operation does it.
void selectView(int id) {
  runMacro(text::format(L"~ Activate `main_dlg_cur` `page_Layout_control_btn` 1;~ Select `main_dlg_cur` `DrwAssyTree` "
                        L"1 `node0:view_%d 92 0 -1 -1 -1`;",
                        id),
           L"The view can't be selected");
}

void runForViews(const Task& task) {
  const creo::ProMdl drawing = task.model();
  if (!isDrawing(drawing)) return;
  const auto views = creo::ProDrawingViewsCollect(drawing);
  if (!creo::isTold(views)) core::logWrite(L"The views of the drawing can't be read", core::kError);
  creo::SheetGuard sheets(drawing);
  for (const creo::ProView& view : views.value) {
    creo::ProSelbufferClear();
    const auto id = creo::ProDrawingViewIdGet(view);
    const auto sheet = creo::ProDrawingViewSheetGet(view);
    if (!id || !sheet || sheets.change(sheet.value) != creo::ProNoError) {
      core::logWrite(text::format(L"The view %d can't be shown", view.id), core::kError);
      continue;
    }
    creo::ProTreetoolRefresh(drawing);
    creo::ProDrawingtreeRefresh(drawing, creo::kActiveWindow);
    selectView(id.value);
    runMapkeyMacro(task, drawing);
  }
}

void runForSelections(const Task& task) {
  creo::SelectionGuard selected;
  if (!selected.saved()) return core::logWrite(L"No selections - 1", core::kError);
  if (selected.saved().value.empty()) return core::logWrite(L"No selections - 2", core::kError);
  for (const creo::ProSelection& selection : selected.saved().value) {
    creo::ProSelbufferClear();
    if (creo::ProSelbufferSelectionAdd(selection) == creo::ProNoError)
      runMapkeyMacro(task, task.model());
    else
      core::logWrite(L"A selection can't be made again", core::kError);
  }
  selectAgain(selected);
}

struct Repetition {
  std::wstring_view value;  // of `rfe`
  void (*run)(const Task& task);
};
constexpr Repetition kRepetitions[] = {
    {L"0", &runOnce}, {L"1", &runForSheets}, {L"2", &runForInstances}, {L"3", &runForViews}, {L"4", &runForSelections}};

Outcome runMapkey(const Task& task) {
  if (!task.isTrue(L"kvpmode")) {
    core::logMsgPlain(Message::notKvdMode, core::kError);
    return done;
  }
  for (const Repetition& row : kRepetitions)
    if (row.value == task.attribute(L"rfe")) row.run(task);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"kvpmode",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::needed,
     .about = "the mapkey was made for this program; else it isn't run"},
    {.name = L"mapkeyc", .kind = Kind::integer, .need = Need::needed, .about = "how many lines the macro has"},
    {.name = L"mapkey%d",
     .kind = Kind::macro,
     .variables = true,
     .need = Need::needed,
     .numbers = Numbers::counted,
     .counter = L"mapkeyc",
     .about = "a line; all are joined without anything between them"},
    {.name = L"rfe",
     .kind = Kind::word,
     .words = L"0|1|2|3|4",
     .need = Need::needed,
     .about = "0: it runs once; 1: for each sheet; 2: instance; 3: view; 4: selected item"},
};

constexpr Action kActions[] = {
    {.key = L"runMapkey",
     .place = 7,
     .group = Group::withoutModel,
     .title = Message::runMapkey,
     .conditions = {kFilterUnlessForAll},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::family,
                 .changes = Touched::model | Touched::programs,
                 .known = false,
                 .takenBack = false},
     .about = "runs a macro of Creo's, once or for each of several things",
     .function = &runMapkey},
};

}  // namespace

std::span<const Action> macroActions() { return kActions; }

}  // namespace actions
