// Notes on the sheets of drawings: written from a file, found by place or text, moved, deleted.
#include "actions/drawing/details.h"
#include "actions/output_file.h"
#include "actions/visits.h"
#include "creo/ProDrawingView.h"
#include "creo/ProNote.h"
#include "creo/ProWindow.h"
#include "creo/guards.h"
#include "language/compare.h"
#include "language/csv_table.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/pieces.h"

namespace actions {
namespace {

using namespace language;
using creo::ProDtlnote;
using creo::ProDtlnotedata;
using creo::ProError;
using creo::ProMdl;

constexpr std::wstring_view kNoteDirectory = L"@pro_note_dir@";

// ---- new notes

// What all entries of a task write.
struct NewNote {
  std::vector<std::wstring> lines;
  double heightFactor = 0;  // 0: the height that a text has anyway
};

// Nothing, with a line, for a file that is no text.
std::optional<std::vector<std::wstring>> linesOfFile(const Task& task) {
  const std::wstring_view given = task.attribute(L"notepath");
  const bool isPath = !given.empty() && given != kNoteDirectory;
  const std::wstring path = isPath ? wholePath(task.path(L"notepath", L"models")) : std::wstring(given);
  const auto content = readTextFile(path);
  if (!content) return std::nullopt;
  if (content->find(L'\0') != content->npos) {
    failDetail(text::format(L"%s is no text in UTF-8 or Windows-1252", path));
    return std::nullopt;
  }
  return text::lines(*content);
}

std::optional<NewNote> newNoteOf(const Task& task) {
  auto lines = linesOfFile(task);
  if (!lines) return std::nullopt;
  NewNote note{std::move(*lines)};
  const std::wstring_view height = task.attribute(L"noteheight");
  if (height.empty()) return note;
  if (const auto factor = numberIn(height); factor && *factor > 0)
    note.heightFactor = *factor;
  else
    failDetail(text::format(L"noteheight is no height: %s", height));
  return note;
}

creo::ProDtlnoteline lineOf(const Task& task, const NewNote& note, const std::wstring& line) {
  creo::ProDtlnotetext text;
  const Replaced replaced = replaceVariables(line, task.model());
  if (replaced.tooLong) failDetail(text::format(L"The line is too long with its variables: %s", line));
  text.text = replaced.hasText() ? replaced.text : line;
  sayDetail(text.text);
  if (note.heightFactor > 0)
    text.height = note.heightFactor *
                  valueOrNone(creo::ProDtlnotetextHeightGet(task.model(), text), L"The height of the note's text");
  return {{std::move(text)}};
}

ProError createNote(const Task& task, const NewNote& note, int sheet, const creo::ProPoint& place) {
  const auto view = creo::ProDrawingOverlayviewGet(task.model(), sheet);
  if (!view) return view.error;
  const auto attachment = creo::ProDtlattachAlloc(creo::ProDtlattachType::free, view.value.id, place);
  if (!attachment) return attachment.error;
  ProDtlnotedata data;
  data.attachment = attachment.value;
  for (const std::wstring& line : note.lines) data.lines.push_back(lineOf(task, note, line));
  const auto created = creo::ProDtlnoteCreate(task.model(), data);
  if (!created) return created.error;
  const ProError shown = showNote(created.value);
  // Nobody would ever see it.
  if (shown != creo::ProNoError && creo::ProDtlnoteDelete(created.value) != creo::ProNoError)
    failDetail(L"The note that isn't shown can't be deleted");
  return shown;
}

void addNoteOn(const Task& task, const NewNote& note, const SheetEntry& entry, int sheet) {
  const auto frame = sheetFrame(task.model(), sheet);
  const auto place = frame ? placeForNew(task, entry, *frame) : std::nullopt;
  if (!place) return;
  if (createNote(task, note, sheet, *place) != creo::ProNoError) failDetail(L"Note can't be created");
  creo::ProWindowRepaint(creo::kAnyWindow);
}

Outcome addNote(const Task& task) {
  const auto note = newNoteOf(task);
  if (!note) return done;
  const int sheets = sheetCount(task.model());
  creo::SheetGuard current(task.model());
  for (const SheetEntry& entry : sheetEntries(task, {L"sheet_"})) {
    if (!task.numbered(L"posx_%d", entry.number)) continue;
    for (int sheet = 1; sheet <= sheets; ++sheet) {
      if (!isForSheet(task, entry, sheet, SheetWork::adding)) continue;
      if (!turnsTo(current, sheet)) continue;
      sayDetail(text::format(L"Sheet %d is worked", sheet));
      addNoteOn(task, *note, entry, sheet);
    }
  }
  return done;
}

// ---- notes that are there

// Ends at the first text that fits.
bool holdsText(const Task& task, const SheetEntry& entry, const ProDtlnotedata& data) {
  const std::wstring_view pattern = task.numbered(L"notetext_%d", entry.number).value_or(L"");
  if (pattern.empty()) return false;
  for (const creo::ProDtlnoteline& line : data.lines)
    for (const creo::ProDtlnotetext& text : line.texts) {
      sayDetail(text::format(L"check %s => %s", pattern, text.text));
      if (matches(pattern, text.text)) return true;
    }
  return false;
}

void moveNoteTo(const Task& task, const SheetEntry& entry, const SheetFrame& frame, const ProDtlnote& note,
                ProDtlnotedata& data) {
  const auto attachment = movedTo(task, entry, frame, data.attachment);
  ProError result = attachment.error;
  if (attachment) {
    data.attachment = attachment.value;
    result = creo::ProDtlnoteModify(note, data);
  }
  tellResult(result, L"Note is moved", L"Can't move the note");
}

Outcome workNotes(const Task& task, std::initializer_list<std::wstring_view> stems, DetailWork work) {
  eachSheetAndEntry(task, stems, [&](const SheetFrame& frame, const SheetEntry& entry) {
    const auto wanted = wantedPlace(task, entry, frame);
    const auto visited = creo::ProDrawingDtlnoteVisit(task.model(), frame.sheet, [&](const ProDtlnote& note) {
      auto data = creo::ProDtlnoteDataGet(note);
      if (!data) failDetail(L"A note can't be read");
      if (!data) return creo::ProNoError;
      const bool isThere = wanted && standsAt(frame, data.value.attachment, *wanted);
      if (!holdsText(task, entry, data.value) && !isThere) return creo::ProNoError;
      sayDetail(L"found a note");
      if (work == DetailWork::move)
        moveNoteTo(task, entry, frame, note, data.value);
      else
        tellResult(creo::ProDtlnoteDelete(note), L"Note is deleted", L"Can't delete the note");
      return creo::ProNoError;
    });
    isWhole(visited, L"The notes");
  });
  return done;
}

Outcome moveNote(const Task& task) { return workNotes(task, {L"nposx_"}, DetailWork::move); }
Outcome deleteNote(const Task& task) { return workNotes(task, {L"posx_", L"notetext_"}, DetailWork::remove); }

// ---- rows

constexpr Attribute kNote[] = {
    {.name = L"notepath",
     .kind = Kind::file,
     .variables = true,
     .need = Need::needed,
     .folder = L"models",
     .about = "a text file with the lines, each of which may hold variables"},
    {.name = L"noteheight",
     .kind = Kind::number,
     .about = "above 0: that many times the drawing's height of texts; absent or empty: that height"},
};
constexpr Attribute kSheetOfNew[] = {
    {.name = L"sheet_%d",
     .kind = Kind::integer,
     .variables = true,
     .need = Need::needed,
     .about = "the number of the sheet; empty, 0 or -1: all sheets"},
};
constexpr Attribute kText[] = {
    {.name = L"notetext_%d",
     .kind = Kind::pattern,
     .need = Need::oneOf,
     .about = "or a text that they hold, as it was entered"},
};
constexpr auto kAddAttributes = joined(kNote, kPlaceOfNew, kSheetOfNew);
constexpr auto kFindAttributes = joined(kWantedPlace, kText, kWantedFormat, kSheet);
constexpr auto kMoveAttributes = joined(kWantedPlace, kText, kWantedFormat, kSheet, kNewPlace);

constexpr Action kActions[] = {
    {.key = L"addNote",
     .place = 75,
     .title = L"Add note",
     .conditions = kOnDrawings,
     .attributes = kAddAttributes,
     .effects = {.reads = Touched::model | Touched::files, .changes = Touched::model | Touched::session},
     .about = "writes the lines of a text file onto sheets of a drawing",
     .function = &addNote},
    {.key = L"moveNote",
     .place = 76,
     .title = L"Move Note",
     .conditions = kOnDrawings,
     .attributes = kMoveAttributes,
     .effects = {.changes = Touched::model},
     .about = "moves notes of a drawing",
     .function = &moveNote},
    {.key = L"deleteNote",
     .place = 77,
     .title = L"Delete Note",
     .conditions = kOnDrawings,
     .attributes = kFindAttributes,
     .effects = {.changes = Touched::model},
     .about = "deletes notes of a drawing that stand at a place or hold a text",
     .function = &deleteNote},
};

}  // namespace

std::span<const Action> noteActions() { return kActions; }

}  // namespace actions
