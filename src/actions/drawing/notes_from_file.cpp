// Notes whose texts come from a table: by the note's id, and by the text that they had.
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "actions/drawing/details.h"
#include "actions/table_file.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProNote.h"
#include "language/compare.h"
#include "language/variables.h"
#include "language/workbook.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace actions {
namespace {

using namespace language;
using creo::ProDtlnote;
using creo::ProDtlnotedata;
using creo::ProDtlnoteline;
using creo::ProDtlnotetext;
using creo::ProError;

constexpr std::wstring_view kLineBreak = L"\\n";  // the two characters, as cells write a line's end

// A row that is for the model.
struct Row {
  std::size_t number = 0;
  std::wstring value, old;
};
// The rows of a table that are for the model, in the table's order.
struct Rows {
  std::vector<Row> all;
  std::unordered_map<int, std::vector<std::size_t>> byId;  // places in `all`
};

struct Columns {
  std::size_t id, file, value, old;  // the table's column count for one that it lacks
};

Columns columnsOf(const CsvTable& table) {
  const std::size_t none = table.columnCount();
  Columns columns{none, none, none, none};
  struct Head {
    std::wstring_view title;
    std::size_t* column;
  };
  const Head heads[] = {{L"ID", &columns.id},
                        {L"file name", &columns.file},
                        {L"filename", &columns.file},
                        {L"Item value", &columns.value},
                        {L"Item value old", &columns.old}};
  for (std::size_t i = 0; i < none; ++i) {
    const auto* found = std::find_if(std::begin(heads), std::end(heads), [&](const Head& head) {
      return text::equalNoCase(table.header(i), head.title) && *head.column == none;
    });
    const bool isKnown = found != std::end(heads);
    if (isKnown) *found->column = i;
    sayDetail(text::format(isKnown ? L"head: %d: %s *" : L"head: %d: %s", static_cast<int>(i), table.header(i)));
  }
  return columns;
}

// False, with a line: a table that names no values, or no notes.
bool areEnough(const Task& task, const CsvTable& table, const Columns& columns) {
  const std::size_t none = table.columnCount();
  const auto missing = [&](std::wstring_view title) {
    failDetail(text::format(L"%s: there is no column '%s'", task.attribute(L"path"), title));
  };
  if (columns.value == none) missing(L"Item value");
  if (columns.id == none && columns.old == none) missing(L"ID' or 'Item value old");
  return columns.value != none && (columns.id != none || columns.old != none);
}

// Those whose file name is the model's, a pattern for it, or none at all.
std::vector<std::size_t> rowsOfModel(const Task& task, const CsvTable& table, std::size_t column) {
  std::vector<std::size_t> rows;
  if (column == table.columnCount()) {
    for (std::size_t row = 0; row < table.rowCount(); ++row) rows.push_back(row);
    return rows;
  }
  const std::wstring name[] = {task.subject().name + L".DRW"};
  const auto named = table.rowsFor(column, name);
  const auto unnamed = table.rowsWithout(column);
  std::merge(named.begin(), named.end(), unnamed.begin(), unnamed.end(), std::back_inserter(rows));
  return rows;
}

Rows rowsFor(const Task& task, const CsvTable& table, const Columns& columns) {
  Rows rows;
  for (const std::size_t row : rowsOfModel(task, table, columns.file)) {
    // It would empty the note.
    if (!table.holds(row, columns.value)) {
      core::logWrite(text::format(L"%s: a row for '%s%s' ends before its value, nothing is set by it",
                                  task.attribute(L"path"), table.cell(row, columns.id), table.cell(row, columns.old)),
                     core::kWarning);
      continue;
    }
    const std::wstring_view written = table.cell(row, columns.id);
    if (const auto id = text::wholeInt(written))
      rows.byId[*id].push_back(rows.all.size());
    else if (!text::trimmed(written).empty())
      failDetail(text::format(L"'%s' is no number of a note", written));
    rows.all.push_back({row, std::wstring(table.cell(row, columns.value)), std::wstring(table.cell(row, columns.old))});
  }
  return rows;
}

// The lines of a new value; both forms of a line's end count.
std::vector<std::wstring> linesOf(std::wstring_view value) {
  std::wstring plain = text::replaceAll(value, L"\r\n", L"\n");
  return text::split(text::replaceAll(plain, kLineBreak, L"\n"), L'\n');
}

// A text in the form of another one.
ProDtlnotetext inFormOf(const ProDtlnotetext& form, std::wstring text) {
  ProDtlnotetext made = form;
  made.text = std::move(text);
  return made;
}

// ---- by id

// Gives the note's lines the new texts; the texts behind a line's first one stay. False: all was so already.
bool setLines(ProDtlnotedata& data, const std::vector<std::wstring>& lines) {
  ProDtlnotetext form;
  if (!data.lines.empty() && !data.lines.front().texts.empty()) form = data.lines.front().texts.front();
  bool changed = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool isNew = i == data.lines.size();
    if (isNew) data.lines.emplace_back();
    auto& texts = data.lines[i].texts;
    if (texts.empty()) texts.push_back(inFormOf(form, {}));
    if (!isNew && texts.front().text == lines[i]) continue;
    sayDetail(isNew ? text::format(core::msgText(Message::addNewLine), lines[i])
                    : text::format(core::msgText(Message::replaceLine), texts.front().text, lines[i]));
    texts.front().text = lines[i];
    changed = true;
  }
  for (; data.lines.size() > lines.size(); changed = true) {
    data.lines.pop_back();
    core::logMsgId(Message::removeLine, core::kNormal, 1);
  }
  return changed;
}

void setById(const ProDtlnote& note, const Row& row) {
  core::logMsgId(Message::foundForId, core::kNormal, 1);
  auto data = creo::ProDtlnoteDataGet(note);
  ProError result = data.error;
  if (data && setLines(data.value, linesOf(row.value))) {
    creo::ProDtlnoteErase(note);
    result = creo::ProDtlnoteModify(note, data.value);
    const ProError shown = showNote(note);
    if (result == creo::ProNoError) result = shown;
  }
  if (result == creo::ProNoError) return;
  failDetail(result == creo::ProBadInputs ? L"Can't set this stuff - BI" : L"Can't set this stuff - MI");
}

// ---- by the old value

// A text on its way through the rows.
struct Edited {
  std::wstring text;
  bool changed = false, splits = false;
};

void replaceIn(Edited& edited, const Task& task, const Row& row) {
  if (!matches(text::format(L"*%s*", row.old), edited.text)) return;
  const Replaced value = replaceVariables(row.value, task.model());
  if (!value.hasText())
    return failDetail(text::format(L"'%s' is not set because errors in the replacement", row.value));
  std::wstring replaced = patternReplace(edited.text, row.old, value.text);
  if (replaced == edited.text) return;
  edited.text = std::move(replaced);
  edited.changed = true;
  edited.splits = edited.splits || linesOf(value.text).size() > 1;
}

// The texts that rows name by their old value, in one note. done: rows that set it by its id, and don't count again.
struct NoteEdit {
  const Task& task;
  const std::vector<const Row*>& rows;
  const std::unordered_set<std::size_t>& done;
  std::vector<std::wstring> set;  // the new texts

  // What a line becomes; the lines behind the first one are new.
  std::vector<ProDtlnoteline> lines(const ProDtlnoteline& line) {
    std::vector<ProDtlnoteline> made(1);
    for (const ProDtlnotetext& text : line.texts) {
      Edited edited{text.text};
      for (const Row* row : rows)
        if (!done.contains(row->number)) replaceIn(edited, task, *row);
      if (edited.changed) set.push_back(edited.text);
      auto pieces = edited.splits ? linesOf(edited.text) : std::vector{edited.text};
      made.front().texts.push_back(inFormOf(text, std::move(pieces.front())));
      for (std::size_t i = 1; i < pieces.size(); ++i) made.push_back({{inFormOf(text, std::move(pieces[i]))}});
    }
    return made;
  }
};

void setByOldValue(const Task& task, const ProDtlnote& note, const std::vector<const Row*>& rows,
                   const std::unordered_set<std::size_t>& done) {
  auto data = creo::ProDtlnoteDataGet(note);
  if (!data) return core::logMsgPlain(Message::newValueNotSet, core::kError);
  NoteEdit edit{task, rows, done, {}};
  std::vector<ProDtlnoteline> lines;
  for (const ProDtlnoteline& line : data.value.lines)
    for (ProDtlnoteline& made : edit.lines(line)) lines.push_back(std::move(made));
  if (edit.set.empty()) return;
  data.value.lines = std::move(lines);
  ProError result = creo::ProDtlnoteModify(note, data.value);
  if (result == creo::ProNoError) result = showNote(note);
  if (result != creo::ProNoError) return core::logMsgPlain(Message::newValueNotSet, core::kError);
  for (const std::wstring& text : edit.set) sayDetail(text::format(core::msgText(Message::setTo), text));
}

// ---- the action

void workSheet(const Task& task, int sheet, const Rows& rows, const std::vector<const Row*>& withOld) {
  const auto notes = creo::ProDrawingDtlnotesCollect(task.model(), sheet);
  if (!creo::isTold(notes)) return failDetail(text::format(L"The notes of sheet %d can't be read", sheet));
  std::unordered_map<int, std::unordered_set<std::size_t>> done;  // rows by note
  for (const ProDtlnote& note : notes.value) {
    core::logWrite(text::format(L"%d: ", note.id), core::kDebug);
    const auto found = rows.byId.find(note.id);
    if (found == rows.byId.end()) continue;
    for (const std::size_t place : found->second) {
      setById(note, rows.all[place]);
      done[note.id].insert(rows.all[place].number);
    }
  }
  if (withOld.empty()) return;
  for (const ProDtlnote& note : notes.value) setByOldValue(task, note, withOld, done[note.id]);
}

Outcome editModelNotesFromFile(const Task& task) {
  const CsvTable* table = tableOf(task);
  if (!table) return Outcome::done;
  const Columns columns = columnsOf(*table);
  sayDetail(text::format(core::msgText(Message::valuesRead), static_cast<int>(table->rowCount())));
  if (!areEnough(task, *table, columns)) return Outcome::done;
  const Rows rows = rowsFor(task, *table, columns);
  std::vector<const Row*> withOld;
  for (const Row& row : rows.all)
    if (!row.old.empty()) withOld.push_back(&row);
  const bool onlyCurrent = task.isTrue(L"curpage");
  const auto sheets = creo::ProDrawingSheetsCount(task.model());
  const auto current = creo::ProDrawingCurrentSheetGet(task.model());
  if (!sheets || (onlyCurrent && !current)) {
    failDetail(L"The sheets of the drawing can't be read");
    return Outcome::done;
  }
  for (int sheet = 1; sheet <= sheets.value; ++sheet)
    if (!onlyCurrent || sheet == current.value) workSheet(task, sheet, rows, withOld);
  return Outcome::done;
}

constexpr Attribute kSheets[] = {
    {.name = L"curpage", .kind = Kind::flag, .words = L"true", .about = "only notes of the current sheet"},
};
constexpr auto kAttributes = joined(kTableFile, kSheets);

constexpr Action kActions[] = {
    {.key = L"editModelNotesFromFile",
     .place = 61,
     .title = Message::editNotesFromFile,
     .conditions = kOnDrawings,
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::files | Touched::programs,
                 .changes = Touched::model | Touched::files | Touched::session},
     .about = "gives notes of a drawing texts from a table, by their ids or by the texts that they had",
     .function = &editModelNotesFromFile},
};

}  // namespace

std::span<const Action> noteTableActions() { return kActions; }

}  // namespace actions
