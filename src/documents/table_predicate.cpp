// The predicate "tableOnDrawing".
#include <algorithm>
#include <cmath>
#include <optional>

#include "creo/ProDwgtable.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "language/variables.h"
#include "text/numbers.h"

namespace documents {
namespace {

constexpr double kPlaceTolerance = 5.0;  // of the drawing's units, on each axis
constexpr std::wstring_view kAll = L"*";

// What the item asks of a table, read once for all tables.
struct Wanted {
  int sheet = -1;  // 0, -1: any
  bool both = false;
  std::optional<creo::ProPoint> position;  // on the sheet; a negative value counts from the far edge
  std::wstring_view text;
  std::optional<int> column, row;  // none: all

  [[nodiscard]] bool anySheet() const { return sheet == 0 || sheet == -1; }
  [[nodiscard]] int hits() const { return both ? 2 : 1; }
};

std::optional<int> numberUnlessAll(std::wstring_view value) {
  if (value == kAll) return std::nullopt;
  return text::parseInt(value);
}

// Nothing: the sheet's number can't be replaced; its line is in the log.
std::optional<Wanted> wantedBy(const core::XmlNode& item, creo::ProMdl model) {
  Wanted wanted;
  if (core::attrFind(item.attributes, L"sheet")) {
    const auto sheet = language::replaceVariables(valueOf(item, L"sheet"), model);
    if (!sheet) return std::nullopt;
    wanted.sheet = text::parseInt(sheet.text);
  }
  wanted.both = isTrue(item, L"filterand");
  if (const std::wstring_view x = valueOf(item, L"pos-x"); !x.empty())
    wanted.position = {text::parseDouble(x), text::parseDouble(valueOf(item, L"pos-y"))};
  wanted.text = valueOf(item, L"cell-s");
  wanted.column = numberUnlessAll(valueOf(item, L"cell-x", kAll));
  wanted.row = numberUnlessAll(valueOf(item, L"cell-y", kAll));
  return wanted;
}

bool liesAt(const creo::ProPoint& position, creo::ProPoint wanted, creo::ProMdl drawing, int sheet) {
  if (const auto size = creo::ProDrawingSheetInfoGet(drawing, sheet)) {
    if (wanted.x < 0) wanted.x += size.value.width;
    if (wanted.y < 0) wanted.y += size.value.height;
  }
  if (const auto matrix = creo::ProDrawingSheetTrfGet(drawing, sheet)) {
    // Tables keep their places in the drawing's coordinates; the matrix leads from there to the sheet's.
    wanted.x = (wanted.x - matrix.value.offsetX) / matrix.value.scaleX;
    wanted.y = (wanted.y - matrix.value.offsetY) / matrix.value.scaleY;
  }
  return std::fabs(position.x - wanted.x) <= kPlaceTolerance && std::fabs(position.y - wanted.y) <= kPlaceTolerance;
}

// How many of a cell's two texts, displayed and symbolic, have a line that fits.
int hitsInCell(const creo::ProDwgtable& table, int column, int row, std::wstring_view pattern) {
  int hits = 0;
  for (const auto mode : {creo::ProDwgtableText::displayed, creo::ProDwgtableText::symbolic}) {
    const auto lines = creo::ProDwgtableCelltextGet(table, column, row, mode);
    if (!lines) continue;
    hits += std::any_of(lines.value.begin(), lines.value.end(),
                        [&](const std::wstring& line) { return matches(pattern, line); });
  }
  return hits;
}

// hits: those that the table has already. The scan ends with the column that brings enough.
int hitsInCells(const creo::ProDwgtable& table, const Wanted& wanted, int hits) {
  const auto columns = creo::ProDwgtableColumnsCount(table), rows = creo::ProDwgtableRowsCount(table);
  if (!columns || !rows) return hits;
  for (int column = 1; column <= columns.value && hits < wanted.hits(); ++column) {
    if (wanted.column && *wanted.column != column) continue;
    for (int row = 1; row <= rows.value; ++row)
      if (!wanted.row || *wanted.row == row) hits += hitsInCell(table, column, row, wanted.text);
  }
  return hits;
}

bool fits(const creo::ProDwgtable& table, const Wanted& wanted) {
  int segment = 0;
  auto sheet = creo::ProDwgtableSegSheetGet(table, segment);
  if (!sheet) sheet = creo::ProDwgtableSegSheetGet(table, segment = -1);
  if (!sheet || (!wanted.anySheet() && sheet.value != wanted.sheet)) return false;
  const auto position = creo::ProDwgtableInfoGet(table, segment);
  if (!position) return false;
  int hits = wanted.position && liesAt(position.value, *wanted.position, table.drawing, sheet.value) ? 1 : 0;
  if (!wanted.text.empty()) hits = hitsInCells(table, wanted, hits);
  return hits >= wanted.hits();
}

Answer tableOnDrawingPredicate(const Question& question) {
  const auto wanted = wantedBy(question.item, question.model);
  if (!wanted) return Answer::no;
  const auto tables = creo::ProDrawingTablesCollect(question.model);
  const bool found = tables && std::any_of(tables.value.begin(), tables.value.end(),
                                           [&](const creo::ProDwgtable& table) { return fits(table, *wanted); });
  return answer(found);
}

constexpr Attribute kTable[] = {
    {.name = L"sheet", .variables = true, .about = "the number of the sheet; 0, -1 or none: any"},
    {.name = L"filterand", .kind = Kind::flag, .words = L"true", .about = "both the place and the text must be met"},
    {.name = L"pos-x", .kind = Kind::number, .need = Need::oneOf, .about = "the place; negative from the far edge"},
    {.name = L"pos-y", .kind = Kind::number, .about = "the same"},
    {.name = L"cell-s", .kind = Kind::pattern, .need = Need::oneOf, .about = "the text of a cell"},
    {.name = L"cell-x", .kind = Kind::index, .about = "the column of that cell"},
    {.name = L"cell-y", .kind = Kind::index, .about = "the row of that cell"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"tableOnDrawing",
     .place = 28,
     .title = L"Extended filter: Table on drawing",
     .models = Models::drawings,
     .attributes = kTable,
     .about = "a table stands at a place, or has a cell whose text fits",
     .function = &tableOnDrawingPredicate},
};

}  // namespace

std::span<const Predicate> tablePredicates() { return kPredicates; }

}  // namespace documents
