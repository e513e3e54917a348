// The formats of a drawing's sheets, exchanged for others.
#include <optional>
#include <set>

#include "actions/drawing/details.h"
#include "actions/drawing/format_tables.h"
#include "actions/drawing/table_finder.h"
#include "actions/model/frame_search.h"
#include "actions/visits.h"
#include "core/messages.h"
#include "creo/ProDrawingFormat.h"
#include "creo/ProMdl.h"
#include "creo/guards.h"
#include "language/compare.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;
using creo::ProDwgtable;
using creo::ProMdl;

constexpr int kMostEntries = 100;
constexpr std::size_t kNameSize = 66;  // of a new format's name, with what follows it
constexpr std::size_t kMostOfName = 63, kMostDigits = 9;
constexpr std::wstring_view kNoFormat = L"noFormatFound";
constexpr std::wstring_view kSearchInFrames = L"3";

// ---- the source of a new format

// "frame_a3", "frame_a3.frm:2", "sheet.drw:3" taken apart.
struct FormatSource {
  std::wstring name;
  creo::ProMdlType type = creo::ProMdlType::format;
  std::optional<int> sheet = 0;  // 0: the first; nothing: what stands there is no number
};

FormatSource formatSource(std::wstring_view text) {
  FormatSource source;
  const std::size_t point = text.substr(0, kMostOfName).find(L'.');
  source.name = text.substr(0, point);
  if (point == text.npos) return source;
  const std::wstring_view ending = text.substr(point + 1);
  if (text::equalNoCase(ending.substr(0, 3), L"drw")) source.type = creo::ProMdlType::drawing;
  if (ending.size() > 4 && ending[3] == L':') source.sheet = text::wholeInt(ending.substr(4, kMostDigits));
  return source;
}

// ---- the model that a format is about

// The models that the tables of the sheet's format name by number. Nothing, with its line, where they can't be told.
std::optional<std::set<int>> numbersInFrame(ProMdl drawing, int sheet) {
  std::set<int> numbers;
  const auto addFrom = [&](const ProDwgtable& table) {
    const int columns = creo::ProDwgtableColumnsCount(table).value, rows = creo::ProDwgtableRowsCount(table).value;
    for (int row = 1; row <= rows; ++row)
      for (int column = 1; column <= columns; ++column)
        for (const std::wstring& line :
             creo::ProDwgtableCelltextGet(table, column, row, creo::ProDwgtableText::symbolic).value)
          if (const auto number = modelNumberIn(line)) {
            sayDetail(text::format(L"Number : %d", *number));
            numbers.insert(*number);
          }
  };
  const creo::ProError visited = creo::ProDrawingTableVisit(drawing, [&](const ProDwgtable& table) {
    const auto fromFormat = creo::ProDwgtableIsFromFormat(table);
    const auto on = placedSegment(table).sheet;
    if (fromFormat && fromFormat.value && on && on.value == sheet) addFrom(table);
    return creo::ProNoError;
  });
  if (!isWhole(visited, L"The tables of the format")) return std::nullopt;
  return numbers;
}

// None: the drawing has no model. Nothing, with its line: which one it is can't be told.
std::optional<ProMdl> modelForFormat(const Task& task, int sheet) {
  const auto current = creo::ProDrawingCurrentsolidGet(task.model());
  if (!creo::isTold(current)) {
    cantRead(L"The current model of the drawing");
    return std::nullopt;
  }
  const ProMdl active = current.value;
  if (task.attribute(L"multiModelsSel") != kSearchInFrames) return active;
  const auto models = creo::ProDrawingSolidsCollect(task.model());
  if (!creo::isTold(models)) {
    failDetail(L"The models of the drawing can't be read");
    return std::nullopt;
  }
  if (models.value.size() < 2) return active;
  sayDetail(L"- search in frames");
  const auto numbers = numbersInFrame(task.model(), sheet);
  if (!numbers) return std::nullopt;
  if (numbers->size() == 1)
    return modelOfNumber(task.model(), models.value, *numbers->begin(), core::kNormal).value_or(active);
  core::logWrite(L"Found multiple or no possible model, use active one.", core::kWarning);
  return active;
}

// ---- the exchange

void exchange(const Task& task, int sheet, int number, ProMdl solid) {
  const Replaced replaced = replaceVariables(task.numbered(L"namet_%d", number).value_or(L""), task.model(), kNameSize);
  const FormatSource source = formatSource(replaced.hasText() ? std::wstring_view(replaced.text) : L"");
  if (source.name.empty()) return failDetail(L"Can't detect frame_name");
  if (!source.sheet) return failDetail(text::format(L"'%s' names no sheet by a number", replaced.text));
  // A rule that can't be read must not delete as none does.
  const std::wstring_view written = task.numbered(L"tab_%d", number).value_or(L"");
  const auto rule = formatTableRule(written);
  if (!rule && !written.empty())
    return failDetail(
        text::format(L"tab_%d is neither x:y, x:y:tolerance nor row!!column!!pattern: %s", number, written));
  const auto model = creo::ProMdlRetrieve(source.name, source.type);
  if (!model) return failDetail(text::format(core::msgText(Message::formatNotRetrieved), source.name));
  deleteFormatTables(task.model(), sheet, rule);
  // Where the former format stays, so does the table that was kept of it.
  if (creo::ProDrawingFormatAdd(task.model(), sheet, solid, model.value, *source.sheet) != creo::ProNoError)
    return failDetail(L"An unknown error happened");
  deleteRepeatedTables(task.model(), sheet, rule);
}

std::wstring presentFormat(ProMdl drawing, int sheet) {
  const auto format = creo::ProDrawingFormatGet(drawing, sheet);
  if (format && !format.value.empty()) return format.value;
  if (!creo::isTold(format)) cantRead(text::format(L"The format of sheet %d", sheet));
  sayDetail(kNoFormat);
  return std::wstring(kNoFormat);
}

void exchangeOnSheet(const Task& task, int sheet) {
  const std::wstring format = presentFormat(task.model(), sheet);
  const auto solid = modelForFormat(task, sheet);
  if (!solid) return;
  for (const Task::Numbered& entry : task.numberedAll(L"namef_", kMostEntries))
    if (matches(entry.value, format)) exchange(task, sheet, entry.number, *solid);
}

// A hidden format is shown while it is worked.
void workSheet(const Task& task, int sheet) {
  const auto blanked = creo::ProDrawingSheetFormatIsBlanked(task.model(), sheet);
  const bool hide = blanked && blanked.value;
  if (hide && creo::ProDrawingSheetFormatShow(task.model(), sheet) != creo::ProNoError)
    return failDetail(text::format(core::msgText(Message::sheetBlanked), sheet));
  exchangeOnSheet(task, sheet);
  if (hide && creo::ProDrawingSheetFormatHide(task.model(), sheet) != creo::ProNoError)
    failDetail(text::format(L"The format of sheet %d can't be hidden again", sheet));
}

void workSheets(const Task& task) {
  const auto count = creo::ProDrawingSheetsCount(task.model()), before = creo::ProDrawingCurrentSheetGet(task.model());
  const bool currentOnly = task.isTrue(L"onlyCurrentSheet");
  if (!count || !before) return failDetail(L"The sheets of the drawing can't be read");
  creo::SheetGuard current(task.model());
  const int first = currentOnly ? before.value : 1, last = currentOnly ? before.value : count.value;
  for (int sheet = first; sheet <= last; ++sheet) {
    if (current.change(sheet) == creo::ProNoError)
      workSheet(task, sheet);
    else
      failDetail(text::format(L"Can't make sheet %d the current one", sheet));
  }
}

Outcome replaceFormat(const Task& task) {
  creo::OptionGuard folder(L"pro_format_dir");
  if (!task.attribute(L"path").empty()) {
    const std::wstring path = task.path(L"path", L"models");
    if (folder.change(path) != creo::ProNoError) {
      failDetail(text::format(L"Can't look for formats in %s", path));
      return done;
    }
  }
  workSheets(task);
  if (!folder.back()) failDetail(L"pro_format_dir can't be put back");
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"namef_%d",
     .kind = Kind::pattern,
     .need = Need::needed,
     .about = "the name of the sheet's present format; noFormatFound: a sheet without one"},
    {.name = L"namet_%d",
     .variables = true,
     .need = Need::needed,
     .about = "the new format: frame_a3, frame_a3.frm:2 for its second sheet, sheet.drw:3 for one of a drawing"},
    {.name = L"path",
     .kind = Kind::folder,
     .variables = true,
     .folder = L"models",
     .about = "the folder of the new formats; empty or absent: where Creo always looks"},
    {.name = L"onlyCurrentSheet", .kind = Kind::flag, .words = L"true", .about = "only the current sheet"},
    {.name = L"multiModelsSel",
     .kind = Kind::word,
     .words = L"0|1|2|3",
     .about = "3: the format is about the model that the present one's tables name; else about the current one"},
    {.name = L"tab_%d",
     .about =
         "a table of the present format that stays: x:y or x:y:tolerance where it stands, or row!!column!!pattern"},
};

constexpr Action kActions[] = {
    {.key = L"replaceFormat",
     .place = 60,
     .title = Message::replaceFormat,
     .conditions = kOnDrawings,
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::files | Touched::options,
                 .changes = Touched::model | Touched::session | Touched::options},
     .about = "gives sheets of a drawing another format",
     .function = &replaceFormat},
};

}  // namespace

std::span<const Action> replaceFormatActions() { return kActions; }

}  // namespace actions
