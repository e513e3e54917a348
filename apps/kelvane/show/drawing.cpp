#include "kelvane/show/drawing.h"

#include <algorithm>

#include "actions/table_file.h"
#include "creo/ProDwgtable.h"
#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/session.h"
#include "headless/store/enum_texts.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using headless::ModelRecord;

std::string sizeName(creo::ProSheetSize size) {
  const auto& texts = headless::EnumTexts<creo::ProSheetSize>::texts;
  const auto* found =
      std::find_if(std::begin(texts), std::end(texts), [&](const auto& text) { return text.second == size; });
  return found == std::end(texts) ? std::string() : std::string(found->first);
}

std::string place(const std::wstring& label, const headless::PointRecord& point) {
  return text::toUtf8(text::format(L"%s at %s, %s", label, text::shortest(point.x), text::shortest(point.y)));
}

Section sheetsOf(const headless::ModelDocument& drawing) {
  Section section{"sheets", {}};
  for (int number = 1; number <= headless::sheetCount(drawing); ++number) {
    const headless::SheetRecord& sheet = *headless::sheetOf(drawing, number);
    const creo::ProSheetDimensions size = headless::sheetDimensions(sheet);
    section.rows.push_back(
        {std::to_string(number), text::toUtf8(headless::sheetName(sheet, number)), sizeName(size.size),
         text::toUtf8(text::format(L"%s x %s", text::shortest(size.width), text::shortest(size.height))),
         "scale " + text::toUtf8(text::shortest(sheet.scale)), sheet.format.empty() ? "no format" : sheet.format,
         number == headless::currentSheetOf(drawing) ? "current" : ""});
  }
  return section;
}

// As the sheet shows them; the lines of a cell are joined. A row without a text is left out.
std::vector<std::vector<std::string>> cellsOf(creo::ProMdl drawing, const headless::TableRecord& table) {
  std::vector<std::vector<std::string>> rows;
  const creo::ProDwgtable handle{drawing, table.id};
  for (int row = 1; row <= static_cast<int>(table.rows.size()); ++row) {
    std::vector<std::string> cells;
    for (int column = 1; column <= static_cast<int>(table.columns.size()); ++column) {
      const auto lines = creo::ProDwgtableCelltextGet(handle, column, row, creo::ProDwgtableText::displayed);
      cells.push_back(text::toUtf8(text::join(lines.value, L" / ")));
    }
    if (std::any_of(cells.begin(), cells.end(), [](const std::string& cell) { return !cell.empty(); }))
      rows.push_back(std::move(cells));
  }
  if (rows.empty()) rows.push_back({"empty"});
  return rows;
}

Section tableOf(creo::ProMdl drawing, const headless::TableRecord& table) {
  std::string title = "table " + (table.name.empty() ? std::to_string(table.id) : table.name);
  for (const headless::SegmentRecord& segment : table.segments)
    title += ", " + place(L"sheet " + std::to_wstring(segment.sheet), segment.position);
  if (table.fromFormat) title += ", from the format";
  return {title, cellsOf(drawing, table)};
}

Section symbolsOf(const ModelRecord& record) {
  Section section{"symbols", {}};
  for (const headless::SymbolRecord& symbol : record.symbols)
    section.rows.push_back({symbol.definition, place(L"sheet " + std::to_wstring(symbol.sheet), symbol.position)});
  for (const headless::SymbolDefinitionRecord& definition : record.symbolDefinitions) {
    const bool isUsed = std::any_of(record.symbols.begin(), record.symbols.end(), [&](const auto& symbol) {
      return headless::sameName(symbol.definition, definition.name);
    });
    if (!isUsed) section.rows.push_back({definition.name, "not used"});
  }
  return section;
}

Section detailOptionsOf(const ModelRecord& record) {
  Section section{"detail options", {}};
  for (const headless::DetailOptionRecord& option : record.detailOptions)
    section.rows.push_back({option.name, option.value});
  return section;
}

}  // namespace

std::vector<Section> drawingSections(creo::ProMdl drawing) {
  const headless::Model* model = headless::Session::current().models().find(drawing);
  if (!model || !headless::hasSheets(model->type())) return {};
  const ModelRecord& record = model->document->record;
  std::vector<Section> sections = {sheetsOf(*model->document)};
  for (const headless::TableRecord& table : record.tables) sections.push_back(tableOf(drawing, table));
  sections.push_back(symbolsOf(record));
  sections.push_back(detailOptionsOf(record));
  return sections;
}

}  // namespace kelvane
