#include "creo/ProDwgtable.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "headless/creo/drawing_operation.h"
#include "headless/model/detour.h"
#include "headless/model/drawing_text.h"
#include "text/encoding.h"

namespace creo {

using headless::CellRecord;
using headless::Model;
using headless::onDrawing;
using headless::onTable;
using headless::SegmentRecord;
using headless::TableRecord;
using State = headless::Session::State;
using Lines = std::vector<std::wstring>;

namespace {

std::vector<ProDwgtable> tablesOf(const Model& drawing) {
  std::vector<ProDwgtable> tables;
  for (const TableRecord& table : drawing.document->record.tables) tables.push_back({drawing.handle, table.id});
  return tables;
}

bool hasCell(const TableRecord& table, int column, int row) {
  return column >= 1 && row >= 1 && static_cast<std::size_t>(column) <= table.columns.size() &&
         static_cast<std::size_t>(row) <= table.rows.size();
}

bool hasText(const CellRecord& cell) {
  return std::any_of(cell.lines.begin(), cell.lines.end(), [](const std::string& line) { return !line.empty(); });
}

constexpr std::size_t kMostColumns = 50;

bool areMeasures(const std::vector<double>& measures) {
  return !measures.empty() && std::all_of(measures.begin(), measures.end(),
                                          [](double measure) { return std::isfinite(measure) && measure > 0; });
}

}  // namespace

ProError ProDrawingTableVisit(ProMdl drawing, Visitor<ProDwgtable> visitor) {
  return onDrawing("ProDrawingTableVisit", drawing,
                   [&](State&, Model& m) -> ProError { return headless::visit<ProDwgtable>(tablesOf(m), visitor); });
}

Got<std::vector<ProDwgtable>> ProDrawingTablesCollect(ProMdl drawing) {
  return onDrawing("ProDrawingTablesCollect", drawing, [](State&, Model& m) -> Got<std::vector<ProDwgtable>> {
    if (m.document->record.tables.empty()) return ProNotFound;
    return tablesOf(m);
  });
}

Got<int> ProDwgtableSegCount(const ProDwgtable& table) {
  return onTable("ProDwgtableSegCount", table, [](State&, Model&, TableRecord& record) -> Got<int> {
    return static_cast<int>(record.segments.size());
  });
}

Got<int> ProDwgtableSegSheetGet(const ProDwgtable& table, int segment) {
  return onTable("ProDwgtableSegSheetGet", table, [&](State&, Model&, TableRecord& record) -> Got<int> {
    const SegmentRecord* found = headless::segmentOf(record, segment);
    if (!found) return ProNotFound;
    return found->sheet;
  });
}

Got<ProPoint> ProDwgtableInfoGet(const ProDwgtable& table, int segment) {
  return onTable("ProDwgtableInfoGet", table, [&](State&, Model&, TableRecord& record) -> Got<ProPoint> {
    const SegmentRecord* found = headless::segmentOf(record, segment);
    if (!found) return ProNotFound;
    return ProPoint{found->position.x, found->position.y};
  });
}

Got<int> ProDwgtableColumnsCount(const ProDwgtable& table) {
  return onTable("ProDwgtableColumnsCount", table, [](State&, Model&, TableRecord& record) -> Got<int> {
    return static_cast<int>(record.columns.size());
  });
}

Got<int> ProDwgtableRowsCount(const ProDwgtable& table) {
  return onTable("ProDwgtableRowsCount", table,
                 [](State&, Model&, TableRecord& record) -> Got<int> { return static_cast<int>(record.rows.size()); });
}

Got<Lines> ProDwgtableCelltextGet(const ProDwgtable& table, int column, int row, ProDwgtableText mode) {
  return onTable("ProDwgtableCelltextGet", table, [&](State& state, Model& m, TableRecord& record) -> Got<Lines> {
    if (!hasCell(record, column, row)) return ProNotFound;
    const CellRecord* cell = headless::cellOf(record, column, row);
    if (!cell || !hasText(*cell)) return ProGeneralError;
    Lines lines;
    const int sheet = record.segments.empty() ? headless::currentSheetOf(*m.document) : record.segments.front().sheet;
    for (const std::string& stored : cell->lines) {
      std::wstring line = text::fromUtf8(stored);
      if (mode == ProDwgtableText::displayed)
        line = headless::displayedText(state.models, state.parameters, m, sheet, line);
      lines.push_back(std::move(line));
    }
    return lines;
  });
}

Got<bool> ProDwgtableIsFromFormat(const ProDwgtable& table) {
  return onTable("ProDwgtableIsFromFormat", table,
                 [](State&, Model&, TableRecord& record) -> Got<bool> { return record.fromFormat; });
}

Got<std::vector<int>> ProDwgtableRegionModelsGet(const ProDwgtable& table) {
  return onTable("ProDwgtableRegionModelsGet", table, [](State&, Model&, TableRecord& record) -> Got<std::vector<int>> {
    std::vector<int> numbers;
    for (const headless::RepeatRegionRecord& region : record.repeatRegions)
      if (std::find(numbers.begin(), numbers.end(), region.model) == numbers.end()) numbers.push_back(region.model);
    return numbers;
  });
}

Got<ProDwgtable> ProDrawingTableCreate(ProMdl drawing, const ProPoint& position, const std::vector<double>& columns,
                                       const std::vector<double>& rows) {
  return onDrawing("ProDrawingTableCreate", drawing, [&](State&, Model& m) -> Got<ProDwgtable> {
    if (!areMeasures(columns) || !areMeasures(rows) || columns.size() > kMostColumns) return ProBadInputs;
    auto& tables = m.document->record.tables;
    int highest = 0;
    for (const TableRecord& entry : tables) highest = std::max(highest, entry.id);
    if (highest == std::numeric_limits<int>::max()) return ProGeneralError;
    TableRecord& table = tables.emplace_back();
    table.id = highest + 1;
    table.columns = columns;
    table.rows = rows;
    SegmentRecord& segment = table.segments.emplace_back();
    segment.sheet = headless::currentSheetOf(*m.document);
    segment.position.x = position.x;
    segment.position.y = position.y;
    headless::tableMade(m, table.id);
    return ProDwgtable{m.handle, table.id};
  });
}

ProError ProDwgtableTextEnter(const ProDwgtable& table, int column, int row, const Lines& lines) {
  return onTable("ProDwgtableTextEnter", table, [&](State&, Model& m, TableRecord& record) -> ProError {
    if (!hasCell(record, column, row)) return ProNotFound;
    CellRecord* cell = headless::cellOf(record, column, row);
    if (!cell) {
      if (lines.empty()) return ProNoError;
      cell = &record.cells.emplace_back();
      cell->column = column;
      cell->row = row;
    }
    cell->lines.clear();
    for (const std::wstring& line : lines) cell->lines.push_back(text::toUtf8(line));
    headless::tableWritten(m, record.id);
    return ProNoError;
  });
}

ProError ProDwgtableDelete(const ProDwgtable& table, bool /*repaint*/) {
  return onTable("ProDwgtableDelete", table, [](State&, Model& m, TableRecord& record) -> ProError {
    auto& tables = m.document->record.tables;
    const int id = record.id;
    tables.erase(tables.begin() + (&record - tables.data()));
    headless::tableGone(m, id);
    return ProNoError;
  });
}

}  // namespace creo
