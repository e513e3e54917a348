// Notes on the sheets of drawings: written from a file, found by place or text, moved, deleted.
#include "actions/drawing/details.h"
#include "actions/families.h"
#include "creo/ProDrawingView.h"
#include "creo/ProNote.h"
#include "creo/ProWindow.h"
#include "creo/guards.h"
#include "engine/compare.h"
#include "engine/csv_table.h"
#include "engine/output_file.h"
#include "engine/read_number.h"
#include "text/format.h"
#include "text/pieces.h"

namespace actions {
namespace {

using namespace engine;
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
  std::wstring content;
  if (!readTextFile(path, content)) return std::nullopt;
  if (content.find(L'\0') != content.npos) {
    failDetail(text::format(L"%s is no text in UTF-8 or Windows-1252", path));
    return std::nullopt;
  }
  return text::lines(content);
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
    if (const auto height = creo::ProDtlnotetextHeightGet(task.model(), text))
      text.height = note.heightFactor * height.value;
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
  const ProError shown = creo::ProDtlnoteShow(created.value);
  if (shown != creo::ProNoError) creo::ProDtlnoteDelete(created.value);  // nobody would ever see it
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
  if (const auto ended = begin(task, {.title = L"Add note"})) return *ended;
  if (!isDrawing(task.model())) return done;
  const auto note = newNoteOf(task);
  if (!note) return done;
  const auto sheets = creo::ProDrawingSheetsCount(task.model());
  creo::SheetGuard current(task.model());
  for (const SheetEntry& entry : sheetEntries(task, {L"sheet_"})) {
    if (!task.numbered(L"posx_%d", entry.number)) continue;
    for (int sheet = 1; sheets && sheet <= sheets.value; ++sheet) {
      if (!isForSheet(task, entry, sheet, SheetWork::adding)) continue;
      if (current.change(sheet) != creo::ProNoError) continue;
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
      if (wildcardCompare(pattern, text.text) == 1) return true;
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

Outcome workNotes(const Task& task, std::wstring_view title, std::initializer_list<std::wstring_view> stems,
                  DetailWork work) {
  if (const auto ended = begin(task, {.title = title})) return *ended;
  if (!isDrawing(task.model())) return done;
  eachSheetAndEntry(task, stems, [&](const SheetFrame& frame, const SheetEntry& entry) {
    const auto wanted = wantedPlace(task, entry, frame);
    creo::ProDrawingDtlnoteVisit(task.model(), frame.sheet, [&](const ProDtlnote& note) {
      auto data = creo::ProDtlnoteDataGet(note);
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
  });
  return done;
}

Outcome moveNote(const Task& task) { return workNotes(task, L"Move Note", {L"nposx_"}, DetailWork::move); }
Outcome deleteNote(const Task& task) {
  return workNotes(task, L"Delete Note", {L"posx_", L"notetext_"}, DetailWork::remove);
}

constexpr ActionFunction kActions[] = {{L"addNote", &addNote}, {L"moveNote", &moveNote}, {L"deleteNote", &deleteNote}};

}  // namespace

std::span<const ActionFunction> noteActions() { return kActions; }

}  // namespace actions
