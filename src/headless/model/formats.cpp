#include "headless/model/formats.h"

#include <cmath>
#include <utility>

#include "headless/model/drawing.h"
#include "headless/model/drawing_text.h"
#include "headless/model/models.h"
#include "headless/model/retrieve.h"
#include "headless/model/symbols.h"
#include "headless/store/tables_drawing.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {
namespace {

using creo::ProMdlType;

// The ending by which a sheet names a drawing as its format.
constexpr std::wstring_view kDrawingEnding = L".drw";

SheetMatrixRecord matrixOf(const SheetRecord& sheet) {
  SheetMatrixRecord matrix;
  if (!sheet.matrix) return matrix;
  matrix.scaleX = sheet.matrix->scaleX;
  matrix.scaleY = sheet.matrix->scaleY;
  matrix.offsetX = sheet.matrix->offsetX;
  matrix.offsetY = sheet.matrix->offsetY;
  return matrix;
}

SheetRecord& ownSheet(ModelDocument& drawing, int number) {
  auto& sheets = drawing.record.sheets;
  if (sheets.empty()) sheets.emplace_back();
  return sheets[static_cast<std::size_t>(number - 1)];
}

bool liesOn(const TableRecord& table, int sheet) {
  return !table.segments.empty() && table.segments.front().sheet == sheet;
}

// A table of one sheet on another one: where it stood there, as large as there.
void bringOver(TableRecord& table, int fromSheet, const SheetMatrixRecord& from, int toSheet,
               const SheetMatrixRecord& to) {
  std::erase_if(table.segments, [&](const SegmentRecord& record) { return record.sheet != fromSheet; });
  for (SegmentRecord& segment : table.segments) {
    segment.sheet = toSheet;
    segment.position.x = (segment.position.x * from.scaleX + from.offsetX - to.offsetX) / to.scaleX;
    segment.position.y = (segment.position.y * from.scaleY + from.offsetY - to.offsetY) / to.scaleY;
  }
  for (double& width : table.columns) width *= std::fabs(from.scaleX / to.scaleX);
  for (double& height : table.rows) height *= std::fabs(from.scaleY / to.scaleY);
}

void bindTexts(TableRecord& table, int modelNumber) {
  for (CellRecord& cell : table.cells)
    for (std::string& line : cell.lines) line = text::toUtf8(boundToModel(text::fromUtf8(line), modelNumber));
}

std::vector<TableRecord> tablesFor(const Model& drawing, int sheet, const Model& source, int sourceSheet,
                                   int modelNumber) {
  const SheetMatrixRecord from = matrixOf(*sheetOf(*source.document, sourceSheet)),
                          to = matrixOf(*sheetOf(*drawing.document, sheet));
  std::vector<TableRecord> tables;
  for (const TableRecord& entry : source.document->record.tables) {
    if (!liesOn(entry, sourceSheet)) continue;
    TableRecord& table = tables.emplace_back();
    copyValue(entry, table);
    table.fromFormat = true;
    bringOver(table, sourceSheet, from, sheet, to);
    if (modelNumber > 0) bindTexts(table, modelNumber);
  }
  return tables;
}

void takeSheet(SheetRecord& sheet, const SheetRecord& from, const Model& source, int sourceSheet) {
  sheet.size = from.size;
  sheet.portrait = from.portrait;
  sheet.width = from.width;
  sheet.height = from.height;
  std::wstring name = text::lower(source.name);
  if (source.type() == ProMdlType::drawing) name += kDrawingEnding;
  sheet.format = text::toUtf8(name);
  sheet.formatSheet = sourceSheet > 1 ? sourceSheet : 0;
}

}  // namespace

const Model* formatOf(Models& models, const SheetRecord& sheet) {
  if (sheet.format.empty()) return nullptr;
  std::wstring name = text::fromUtf8(sheet.format);
  const bool isDrawing = text::lower(name).ends_with(kDrawingEnding);
  if (isDrawing) name.resize(name.size() - kDrawingEnding.size());
  const auto found = retrieveModel(models, name, isDrawing ? ProMdlType::drawing : ProMdlType::format);
  return found ? models.find(found.value) : nullptr;
}

int formatSheetOf(const SheetRecord& sheet) { return std::max(sheet.formatSheet, 1); }

creo::ProError takeFormat(Model& drawing, int sheet, const Model& source, int sourceSheet, int modelNumber) {
  const int number = sourceSheet == 0 ? 1 : sourceSheet;
  if (!sheetOf(*drawing.document, sheet) || !sheetOf(*source.document, number)) return creo::ProNotFound;
  // All is put together before anything changes: a drawing may take a sheet of its own.
  std::vector<TableRecord> fresh = tablesFor(drawing, sheet, source, number, modelNumber);
  auto& tables = drawing.document->record.tables;
  const int first = nextId(tables);
  const auto room = static_cast<std::size_t>(std::numeric_limits<int>::max() - first);
  if (!fresh.empty() && (first == 0 || fresh.size() > room)) return creo::ProGeneralError;
  SheetRecord& own = ownSheet(*drawing.document, sheet);
  takeSheet(own, *sheetOf(*source.document, number), source, number);
  for (TableRecord& table : tables)
    if (table.fromFormat && liesOn(table, sheet)) table.fromFormat = false;
  int id = first;
  for (TableRecord& entry : fresh) {
    entry.id = id++;
    tables.push_back(std::move(entry));
  }
  drawing.document->touch(nullptr);
  return creo::ProNoError;
}

}  // namespace headless
