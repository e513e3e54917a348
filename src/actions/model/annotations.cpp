// Notes in the space of solids, and the notes and symbols of drawings taken away as a whole.
#include <algorithm>

#include "actions/model/named_states.h"
#include "actions/visits.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDtlsym.h"
#include "creo/ProMdl.h"
#include "creo/ProNote.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

// ---- a note at a coordinate system

struct NamedCsys {
  creo::ProCsys csys;
  std::wstring name;
};
// The one of that name, case-blind; for an empty one the first that has a name, by which a note knows its place.
std::optional<NamedCsys> csysCalled(creo::ProMdl solid, std::wstring_view name) {
  std::optional<NamedCsys> found;
  const creo::ProError visited = creo::ProSolidCsysVisit(solid, [&](const creo::ProCsys& csys) {
    const std::wstring own = creo::ProCsysNameGet(csys).value;
    if (own.empty() || (!name.empty() && !text::equalNoCase(own, name))) return creo::ProNoError;
    found = {csys, own};
    return creo::ProStopVisit;
  });
  isWhole(visited, L"The coordinate systems");
  return found;
}

// Where the note is to stand. Nothing, with an error line: there is no such coordinate system.
std::optional<NamedCsys> wantedCsys(const Task& task) {
  const bool isNamed = !task.attribute(L"csys").empty();
  const std::wstring name = nameIn(task, L"csys");
  auto csys = isNamed && name.empty() ? std::nullopt : csysCalled(task.model(), name);
  if (!csys)
    core::logMsgPlain(Message::noCsys, core::kError);
  else if (isNamed)
    core::logIndented(text::format(core::msgText(Message::csysFound), csys->name), core::kNormal, 1);
  else
    core::logMsgId(Message::noteToFirstCsys, core::kNormal, 1);
  return csys;
}

// A note without its text or its place is none: it goes again.
void writeNote(const creo::ProNote& note, const std::wstring& name, const NamedCsys& at,
               const std::vector<std::wstring>& lines) {
  if (creo::ProNotePlacementSet(note, at.csys) != creo::ProNoError)
    core::logMsgPlain(Message::noteNotCreated, core::kError);
  else if (creo::ProNoteTextSet(note, lines) != creo::ProNoError)
    core::logMsgPlain(Message::noteTextNotSet, core::kError);
  else {
    core::logIndented(text::format(core::msgText(Message::noteCreated), name), core::kNormal, 1);
    core::logIndented(text::format(core::msgText(Message::noteTextSet), name), core::kNormal, 1);
    return;
  }
  creo::ProNoteDelete(note);
}

Outcome add3dAnnotation(const Task& task) {
  const std::wstring name = nameIn(task, L"name");
  std::vector<std::wstring> lines;
  for (const Task::Numbered& line : task.numberedAll(L"text_", kListSize))
    lines.push_back(replacedText(task, line.value));
  if (name.empty() || lines.empty()) {
    core::logWrite(name.empty() ? L"'name' must give the note a name" : L"'text_0' must give the note a text",
                   core::kError);
    return done;
  }
  const auto csys = wantedCsys(task);
  if (!csys) return done;
  if (const auto note = creo::ProSolidNoteCreate(task.model(), name))
    writeNote(note.value, name, *csys, lines);
  else if (note.error == creo::ProExists)
    core::logWrite(text::format(L"%s: there is a note '%s'", core::msgText(Message::noteNotCreated), name),
                   core::kError);
  else
    core::logMsgPlain(Message::noteNotCreated, core::kError);
  return done;
}

// ---- all annotations

// Takes away what was found, the last one first, so that the others stay in their places. Gives how many went.
template <class Item>
int removeAll(std::wstring_view kind, const std::vector<Item>& items, creo::ProError (*remove)(const Item&)) {
  int count = 0;
  for (auto item = items.rbegin(); item != items.rend(); ++item)
    if (remove(*item) == creo::ProNoError)
      ++count;
    else
      core::logWrite(text::format(L"The %s %d can't be deleted", kind, item->id), core::kError);
  return count;
}

// What the sheets of a drawing show. Nothing, with an error line, where they can't be read.
template <class Item>
std::optional<std::vector<Item>> onAllSheets(creo::ProMdl drawing,
                                             creo::Got<std::vector<Item>> (*collect)(creo::ProMdl, int)) {
  const auto count = creo::ProDrawingSheetsCount(drawing);
  bool all = static_cast<bool>(count);
  std::vector<Item> items;
  for (int sheet = 1; all && sheet <= count.value; ++sheet) {
    const auto found = collect(drawing, sheet);
    all = creo::isTold(found);
    items.insert(items.end(), found.value.begin(), found.value.end());
  }
  if (all) return items;
  core::logWrite(L"The sheets of the drawing can't be read", core::kError);
  return std::nullopt;
}

void removeFromDrawing(creo::ProMdl drawing) {
  const auto notes = onAllSheets<creo::ProDtlnote>(drawing, &creo::ProDrawingDtlnotesCollect);
  if (!notes) return;
  const auto symbols = onAllSheets<creo::ProDtlsyminst>(drawing, &creo::ProDrawingDtlsyminstsCollect);
  if (!symbols) return;
  const int notesGone = removeAll<creo::ProDtlnote>(L"note", *notes, &creo::ProDtlnoteDelete);
  const int symbolsGone = removeAll<creo::ProDtlsyminst>(L"symbol", *symbols, &creo::ProDtlsyminstDelete);
  core::logIndented(text::format(L"%d notes and %d symbols removed", notesGone, symbolsGone), core::kNormal, 1);
}

void removeFromSolid(creo::ProMdl solid) {
  std::vector<creo::ProNote> notes;
  const creo::ProError visited = creo::ProMdlNoteVisit(solid, [&](const creo::ProNote& note) {
    notes.push_back(note);
    return creo::ProNoError;
  });
  if (!isWhole(visited, L"The notes")) return;
  const int gone = removeAll<creo::ProNote>(L"note", notes, &creo::ProNoteDelete);
  core::logIndented(text::format(L"%d notes removed", gone), core::kNormal, 1);
}

Outcome removeAllAnnotations(const Task& task) {
  if (creo::ProMdlTypeGet(task.model()).value == creo::ProMdlType::drawing)
    removeFromDrawing(task.model());
  else
    removeFromSolid(task.model());
  return done;
}

constexpr Attribute kAddAttributes[] = {
    {.name = L"name", .variables = true, .need = Need::needed, .about = "the note's name"},
    {.name = L"text_%d", .variables = true, .need = Need::needed, .about = "its lines; gaps are passed over"},
    {.name = L"csys",
     .variables = true,
     .about = "the coordinate system where it stands; absent or empty: the first that has a name"},
};

constexpr Action kActions[] = {
    {.key = L"add3dannotation",
     .place = 50,
     .title = Message::add3dNote,
     .conditions = kOnNativeSolids,
     .attributes = kAddAttributes,
     .effects = {.changes = Touched::model},
     .about = "puts a note into the space of a solid",
     .function = &add3dAnnotation},
    {.key = L"removeAllAnnotations",
     .place = 90,
     .title = L"Remove all annotations",
     .conditions = {kFilter, kAnyType, kNotInstance},
     .effects = {.changes = Touched::model},
     .about = "takes away all notes and placed symbols of a drawing, or all notes of a solid",
     .function = &removeAllAnnotations},
};

}  // namespace

std::span<const Action> annotationActions() { return kActions; }

}  // namespace actions
