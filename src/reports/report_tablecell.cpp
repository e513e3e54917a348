// Cells of drawing tables in a report.
#include "language/table_location.h"
#include "reports/report_row.h"
#include "text/format.h"
#include "text/pieces.h"

namespace reports {
namespace {

using namespace actions;
using namespace language;

constexpr int kMostCells = 100;

// What a table's cell gives: its sheet if that is wanted, then its lines, each with a line feed.
std::wstring cellText(const Task& task, const LocatedTable& located, const TableCell& cell) {
  const bool asText = task.isTrue(L"asText");
  std::wstring out;
  if (task.isTrue(L"ss") && located.sheet) {
    out = text::format(L"%d: ", *located.sheet);
    if (asText) out += L'\n';
  }
  const auto mode = asText ? creo::ProDwgtableText::displayed : creo::ProDwgtableText::symbolic;
  const auto lines = creo::ProDwgtableCelltextGet(located.table, cell.column, cell.row, mode);
  for (const std::wstring& line : lines.value) out.append(line).append(L"\n");
  return out;
}

std::wstring collected(const Task& task, std::wstring_view where, std::wstring_view which) {
  const auto location = parseTableLocation(where);
  const auto cell = parseTableCell(which);
  if (!location || !cell) return {};
  std::wstring all;
  walkTables(task.model(), *location, task.isTrue(L"onlyOnCurrentSheet"), [&](const LocatedTable& located) {
    all += cellText(task, located, *cell);
    return !task.isTrue(L"onlyfirsttable");
  });
  if (task.isTrue(L"nolinebreaks")) std::erase(all, L'\n');
  if (task.isTrue(L"quoterepl")) all = text::replaceAll(all, std::wstring_view(L"\""), std::wstring_view(L"''"));
  return all;
}

Outcome reportTablecell(const Task& task) {
  const auto row = ReportRow::of(task);
  if (!row) return done;
  for (const int i : task.numbers(L"cell0_", kMostCells)) {
    const std::wstring_view where = *task.numbered(L"cell0_%d", i);
    const std::wstring_view which = task.numbered(L"cell1_%d", i).value_or(L"");
    if (where.empty() || which.empty()) continue;
    const std::wstring_view title = task.numbered(L"cell2_%d", i).value_or(L"");
    const std::wstring key = text::format(L"reportTablecell-%d", i);
    row->column(key, title.empty() ? text::format(L"%s--%s", where, which) : std::wstring(title));
    row->value(key, collected(task, where, which));
  }
  return done;
}

constexpr Attribute kCells[] = {
    {.name = L"cell0_%d", .need = Need::needed, .about = "which tables: row::column::pattern, or x!!y!!tolerance"},
    {.name = L"cell1_%d", .kind = Kind::cell, .need = Need::needed, .about = "which cell: row:column, from 1"},
    {.name = L"cell2_%d", .about = "the column's title"},
    flag(L"onlyfirsttable", "only the first table that fits"),
    flag(L"onlyOnCurrentSheet", "tables of other sheets are passed over"),
    flag(L"asText", "the text as the sheet shows it, else as it was entered"),
    flag(L"ss", "the number of the table's sheet stands before the text"),
    flag(L"nolinebreaks", "without line breaks, else each line of the cell ends with one"),
    flag(L"quoterepl", "two apostrophes in place of a double quote"),
};
constexpr auto kAttributes = reportAttributes(kCells);

constexpr Action kActions[] = {
    {.key = L"reportTablecell",
     .place = 32,
     .title = L"Report Tablecell",
     .attributes = kAttributes,
     .effects = {.changes = Touched::reports},
     .about = "reports cells of a drawing's tables, a column each",
     .function = &reportTablecell},
};

}  // namespace

std::span<const actions::Action> reportTablecellActions() { return kActions; }

}  // namespace reports
