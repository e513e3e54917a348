// What the members of a drawing's document mean: its models, sheets, tables and symbols.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "creo/ProDwgtable.h"
#include "headless/model/model.h"

namespace headless {

// "GEAR.prt", as a drawing names one of its models.
std::string modelLabel(std::wstring_view name, creo::ProMdlType type);
bool isLabelOf(const std::string& label, std::wstring_view name, creo::ProMdlType type);
// The current model, or the first where the document names none that it shows. Nothing: the drawing has no model.
std::optional<creo::ProDependency> currentModelOf(const Model& drawing);

// The one that its texts are about: the current model as it was at the last regeneration.
std::optional<creo::ProDependency> modelOfTexts(const Model& drawing);

// Drawings and formats, which are laid out alike.
constexpr bool hasSheets(creo::ProMdlType type) {
  return type == creo::ProMdlType::drawing || type == creo::ProMdlType::format;
}
// A drawing always has a sheet: the document of one that names none stands for a blank A4.
int sheetCount(const ModelDocument& drawing);
// From 1, never beyond the last.
int currentSheetOf(const ModelDocument& drawing);
// Null for a sheet that isn't there.
const SheetRecord* sheetOf(const ModelDocument& drawing, int number);
// What the size says, landscape or portrait, unless the sheet has a width or height of its own.
creo::ProSheetDimensions sheetDimensions(const SheetRecord& sheet);
// "SHEET2" for one without a name.
std::wstring sheetName(const SheetRecord& sheet, int number);
// The scale of the sheet's first view of that model, else the sheet's own.
double scaleOnSheet(const ModelDocument& drawing, int sheet, std::wstring_view name, creo::ProMdlType type);

// Null for none.
TableRecord* tableOf(ModelDocument& drawing, int id);
// -1 is a table's only segment. Null for one that isn't there.
const SegmentRecord* segmentOf(const TableRecord& table, int segment);
SegmentRecord* segmentOf(TableRecord& table, int segment);
// Null for an empty cell.
CellRecord* cellOf(TableRecord& table, int column, int row);

}  // namespace headless
