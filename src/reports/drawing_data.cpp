// reportDrawingdata: columns of what a drawing holds.
#include <map>

#include "creo/ProDwgtable.h"
#include "creo/ProMdl.h"
#include "creo/ProNote.h"
#include "creo/ProView.h"
#include "reports/list_rows.h"
#include "reports/report_row.h"
#include "reports/sheet_names.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports {

using namespace actions;
using creo::ProMdl;

namespace {

std::wstring number(int value) { return text::format(L"%d", value); }
std::wstring number(const creo::Got<int>& value) { return value ? number(value.value) : std::wstring(); }

// A line a sheet, "2 - A4"; a sheet without the value is left out.
std::wstring sheetLines(ProMdl drawing, creo::FunctionRef<std::wstring(int sheet)> value) {
  std::wstring lines;
  eachSheet(drawing, [&](int sheet) {
    const std::wstring text = value(sheet);
    if (!text.empty()) appendLine(lines, number(sheet) + L" - " + text);
  });
  return lines;
}
std::wstring textOf(const creo::Got<std::wstring>& text) { return text ? text.value : std::wstring(); }

std::wstring currentSheet(const ProMdl& drawing) { return number(creo::ProDrawingCurrentSheetGet(drawing)); }
std::wstring sheetCount(const ProMdl& drawing) { return number(creo::ProDrawingSheetsCount(drawing)); }
std::wstring sheetNames(const ProMdl& drawing) {
  return sheetLines(drawing, [&](int sheet) { return textOf(creo::ProDrawingSheetNameGet(drawing, sheet)); });
}
std::wstring sheetSizes(const ProMdl& drawing) {
  return sheetLines(drawing, [&](int sheet) { return sizeName(creo::ProDrawingSheetSizeGet(drawing, sheet)); });
}
std::wstring formats(const ProMdl& drawing) {
  return sheetLines(drawing, [&](int sheet) { return textOf(creo::ProDrawingFormatGet(drawing, sheet)); });
}
// Of the current model.
std::wstring scales(const ProMdl& drawing) {
  const auto solid = creo::ProDrawingCurrentsolidGet(drawing);
  if (!solid) return {};
  return sheetLines(drawing, [&](int sheet) {
    const auto scale = creo::ProDrawingScaleGet(drawing, solid.value, sheet);
    return scale ? text::format(L"%f", scale.value) : std::wstring();
  });
}

std::wstring nameWithType(ProMdl model) {
  const auto data = creo::ProMdlDataGet(model);
  return data ? data.value.name + L"." + data.value.type : std::wstring();
}
std::wstring currentModel(const ProMdl& drawing) {
  const auto solid = creo::ProDrawingCurrentsolidGet(drawing);
  return solid ? nameWithType(solid.value) : std::wstring();
}
std::wstring models(const ProMdl& drawing) {
  std::wstring lines;
  for (const ProMdl solid : creo::ProDrawingSolidsCollect(drawing).value) appendLine(lines, nameWithType(solid));
  return lines;
}
std::wstring views(const ProMdl& drawing) {
  std::wstring lines;
  for (const creo::ProView& view : creo::ProDrawingViewsCollect(drawing).value)
    if (const auto name = creo::ProDrawingViewNameGet(view)) appendLine(lines, name.value);
  return lines;
}

// Sheet and place of its first piece, columns and rows: "1 - 100, 20 - 2 x 3".
std::wstring tableLine(const creo::ProDwgtable& table) {
  const auto sheet = creo::ProDwgtableSegSheetGet(table, 0);
  const auto place = creo::ProDwgtableInfoGet(table, 0);
  std::wstring line = number(sheet);
  if (place) line += L" - " + text::shortest(place.value.x) + L", " + text::shortest(place.value.y);
  return line + L" - " + number(creo::ProDwgtableColumnsCount(table)) + L" x " +
         number(creo::ProDwgtableRowsCount(table));
}
std::wstring tables(const ProMdl& drawing) {
  std::wstring lines;
  for (const auto& table : creo::ProDrawingTablesCollect(drawing).value) appendLine(lines, tableLine(table));
  return lines;
}

// A line a definition that is placed, by name, with how often it is.
std::wstring symbols(const ProMdl& drawing) {
  std::map<std::wstring, int> placed;
  eachSheet(drawing, [&](int sheet) {
    for (const auto& symbol : creo::ProDrawingDtlsyminstsCollect(drawing, sheet).value)
      if (const auto name = symbolName(symbol)) ++placed[name.value];
  });
  std::wstring lines;
  for (const auto& [name, times] : placed) appendLine(lines, name + L" - " + number(times));
  return lines;
}

// A line a note, as the sheet shows it; the lines of a note are joined by a blank.
std::wstring notes(const ProMdl& drawing) {
  std::wstring lines;
  eachSheet(drawing, [&](int sheet) {
    for (const auto& note : creo::ProDrawingDtlnotesCollect(drawing, sheet).value)
      appendLine(lines, joined(creo::ProDtlnoteTextGet(note, creo::ProDtlText::displayed), L" "));
  });
  return lines;
}

// Those of its own, and those of its models that it shows. Empty where not all can be told.
std::wstring dimensions(const ProMdl& drawing) {
  int shown = 0;
  const auto solids = creo::ProDrawingSolidsCollect(drawing);
  bool all = creo::isTold(solids);
  const auto count = [&](const creo::ProDimension& dimension) {
    const auto is = creo::ProAnnotationIsShown(dimension, drawing);
    shown += is && is.value ? 1 : 0;
    all = all && is;
    return creo::ProNoError;
  };
  const auto isVisited = [](creo::ProError visited) {
    return visited == creo::ProNoError || visited == creo::ProNotFound;
  };
  for (const bool reference : {false, true}) {
    all = isVisited(creo::ProDrawingDimensionVisit(drawing, reference, count)) && all;
    for (const ProMdl solid : solids.value) {
      const auto visited = creo::ProSolidDimensionVisit(solid, reference, count);
      all = (isVisited(visited) || visited == creo::ProBadInputs) && all;  // ProBadInputs: no part, no assembly
    }
  }
  return all ? number(shown) : std::wstring();
}

constexpr ReportColumn<ProMdl> kColumns[] = {
    {L"currentsheet", L"Current sheet", &currentSheet, "the number of the current sheet"},
    {L"sheets", L"No. sheets", &sheetCount, "how many sheets there are"},
    {L"sheetnames", L"Sheet names", &sheetNames, "the names of the sheets"},
    {L"sheetsizes", L"Sheet sizes", &sheetSizes, "the sizes of the sheets"},
    {L"formats", L"Formats", &formats, "the formats of the sheets"},
    {L"scales", L"Scales", &scales, "the scale of the current model on each sheet"},
    {L"currentmodel", L"Current model", &currentModel, "the current model"},
    {L"models", L"Models", &models, "the models that it shows"},
    {L"views", L"Views", &views, "the names of views"},
    {L"tables", L"Tables", &tables, "tables with their sheet, place, columns and rows"},
    {L"symbols", L"Symbols", &symbols, "definitions of symbols that are placed, and how often"},
    {L"notes", L"Notes", &notes, "notes as the sheets show them"},
    {L"dimensions", L"No. dimensions", &dimensions, "how many dimensions it shows"},
};

Outcome reportDrawingdata(const Task& task) {
  const auto row = ReportRow::of(task);
  if (row) reportColumns<ProMdl>(*row, task, kColumns, task.model());
  return done;
}

constexpr auto kAttributes = reportAttributes(kColumns);

constexpr Action kActions[] = {
    {.key = L"reportDrawingdata",
     .place = 22,
     .title = L"Report drawing data",
     .conditions = {kFilter, kDrawings},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::reports},
     .about = "reports what a drawing holds",
     .function = &reportDrawingdata},
};

}  // namespace

std::span<const actions::Action> drawingReportActions() { return kActions; }

}  // namespace reports
