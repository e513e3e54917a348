// Parameters that take their values from cells of a drawing's tables.
#include "actions/model/parameter_edit.h"
#include "core/log.h"
#include "creo/ProMdl.h"
#include "language/table_location.h"
#include "text/numbers.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace language;

constexpr std::size_t kLineSize = 81;  // what an edit takes as a value, its closing zero included

// The model that is to be changed, by `mdltorework`. Nothing for a value that names none.
std::optional<creo::ProMdl> modelToRework(const Task& task) {
  const std::wstring_view which = task.attribute(L"mdltorework");
  if (which == L"1") return task.model();
  if (which != L"2") return std::nullopt;
  const auto current = creo::ProDrawingCurrentsolidGet(task.model());
  if (current) return current.value;
  core::logWrite(L"No current model found", core::kError);
  return std::nullopt;
}

// The cell's line as a value; nothing, with its error line, where the cell has fewer.
std::optional<std::wstring> lineOf(const creo::ProDwgtable& table, const TableCell& cell) {
  const auto lines = creo::ProDwgtableCelltextGet(table, cell.column, cell.row, creo::ProDwgtableText::displayed);
  if (!lines || cell.line < 0 || static_cast<std::size_t>(cell.line) >= lines.value.size()) {
    core::logWrite(L"Less cells in row as selected cell", core::kError);
    return std::nullopt;
  }
  return std::wstring(text::cut(lines.value[static_cast<std::size_t>(cell.line)], kLineSize - 1));
}

void editFromTable(const Task& task, const creo::ProDwgtable& table, const TableCell& cell, std::wstring_view name) {
  const auto model = modelToRework(task);
  if (!model) return;
  const auto line = lineOf(table, cell);
  if (!line) return;
  core::logIndented(*line, core::kNormal, 2);
  const auto parameter = parameterNamed(*model, name);
  if (!parameter) return core::logWrite(L"Parameter can't be found on Model", core::kError);
  setParameterTo(task, parameter.value, {.value = *line});
}

Outcome editModelParameterFromTablecell(const Task& task) {
  for (const int i : task.numbers(L"cell0_", text::parseInt(task.attribute(L"cell_n")))) {
    const std::wstring_view where = *task.numbered(L"cell0_%d", i);
    const std::wstring_view which = task.numbered(L"cell1_%d", i).value_or(L"");
    const std::wstring_view name = task.numbered(L"cell2_%d", i).value_or(L"");
    if (where.empty() || which.empty() || name.empty()) continue;
    const auto location = parseTableLocation(where);
    const auto cell = location ? parseTableCell(which) : std::nullopt;
    if (!cell) continue;
    const bool onlyCurrentSheet = task.isTrue(L"onlyOnCurrentSheet");
    const bool isRead = walkTables(task.model(), *location, onlyCurrentSheet, [&](const LocatedTable& located) {
      editFromTable(task, located.table, *cell, name);
      return false;
    });
    if (!isRead) core::logWrite(L"The tables of the drawing can't be read", core::kError);
  }
  return done;
}

// The attribute "cellI_%d".
constexpr Attribute ofCell(std::wstring_view name, Kind kind, std::string_view about) {
  return {.name = name,
          .kind = kind,
          .need = Need::needed,
          .numbers = Numbers::counted,
          .counter = L"cell_n",
          .about = about};
}
constexpr Attribute kAttributes[] = {
    {.name = L"cell_n", .kind = Kind::integer, .need = Need::needed, .about = "how many numbers are looked at, from 0"},
    ofCell(L"cell0_%d", Kind::text, "which table: row::column::pattern, or x!!y or x!!y!!tolerance"),
    ofCell(L"cell1_%d", Kind::cell, "the cell, row:column:line: row and column from 1, the line in it from 0"),
    ofCell(L"cell2_%d", Kind::text, "the parameter, which keeps its type"),
    {.name = L"onlyOnCurrentSheet",
     .kind = Kind::flag,
     .words = L"true",
     .about = "tables of other sheets are passed over"},
    {.name = L"mdltorework",
     .kind = Kind::word,
     .words = L"1|2",
     .need = Need::needed,
     .about = "1: the drawing's parameter, 2: that of its current model"},
};

constexpr Action kActions[] = {
    {.key = L"editModelParameterFromTablecell",
     .place = 102,
     .title = L"Edit model parameter from table cell",
     .conditions = {kFilter,
                    {.test = Test::notInstance, .line = Message::instanceRefused, .outcome = done},
                    {.test = Test::drawing}},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users,
                 .changes = Touched::model | Touched::users | Touched::family},
     .about = "sets parameters to lines of cells of a drawing's tables",
     .function = &editModelParameterFromTablecell},
};

}  // namespace

std::span<const Action> editFromTableActions() { return kActions; }

}  // namespace actions
