#include "creo/ProUITable.h"

#include <algorithm>

#include "headless/creo/proui_calls.h"

namespace creo {

using headless::ask;
using headless::Cell;
using headless::change;
using headless::changeDialog;
using headless::Component;
using headless::Dialog;
using headless::Kind;

namespace {

// Applies `apply` to a table's dialog and the table.
template <class Apply>
ProError changeTable(std::string_view operation, const std::string& dialog, const std::string& table, Apply&& apply) {
  return changeDialog(operation, dialog, [&](Dialog& owner) -> ProError {
    const auto found = owner.find(table, Kind::table);
    return found ? apply(owner, found.value->table()) : found.error;
  });
}

// Applies `apply` to a cell; ProNotFound where row or column isn't there.
template <class Apply>
ProError changeCell(std::string_view operation, const std::string& dialog, const std::string& table,
                    const std::string& row, const std::string& column, Apply&& apply) {
  return changeTable(operation, dialog, table, [&](Dialog& owner, headless::Table& found) {
    Cell* cell = found.cell(row, column);
    return cell ? apply(owner, *cell) : ProNotFound;
  });
}

// Applies `apply` to a column; ProNotFound where it isn't there.
template <class Apply>
ProError changeColumn(std::string_view operation, const std::string& dialog, const std::string& table,
                      const std::string& column, Apply&& apply) {
  return change(operation, dialog, table, Kind::table, [&](Component& c) {
    headless::Column* found = c.table().column(column);
    if (found) apply(*found);
    return found ? ProNoError : ProNotFound;
  });
}

}  // namespace

Got<std::vector<std::string>> ProUITableRownamesGet(const std::string& dialog, const std::string& table) {
  return ask<std::vector<std::string>>("ProUITableRownamesGet", dialog, table, Kind::table,
                                       [](const Component& c) { return c.table().rows(); });
}

ProError ProUITableRowsInsert(const std::string& dialog, const std::string& table, const std::string& after,
                              const std::vector<std::string>& rows) {
  return change("ProUITableRowsInsert", dialog, table, Kind::table,
                [&](Component& c) { return c.table().insert(after, rows); });
}

ProError ProUITableRowsDelete(const std::string& dialog, const std::string& table,
                              const std::vector<std::string>& rows) {
  return change("ProUITableRowsDelete", dialog, table, Kind::table, [&](Component& c) {
    return c.table().remove(rows, [](headless::NamedComponent* freed) { freed->second.cell = nullptr; });
  });
}

ProError ProUITableCellComponentCopy(const std::string& dialog, const std::string& table, const std::string& row,
                                     const std::string& column, const std::string& from, const std::string& name) {
  return changeCell("ProUITableCellComponentCopy", dialog, table, row, column,
                    [&](Dialog& d, Cell& cell) { return d.copyIntoCell(cell, from, name); });
}

ProError ProUITableCellComponentDelete(const std::string& dialog, const std::string& table, const std::string& row,
                                       const std::string& column) {
  return changeCell("ProUITableCellComponentDelete", dialog, table, row, column,
                    [](Dialog& d, Cell& cell) { return d.removeFromCell(cell); });
}

ProError ProUITableCellLabelSet(const std::string& dialog, const std::string& table, const std::string& row,
                                const std::string& column, const std::wstring& label) {
  return changeCell("ProUITableCellLabelSet", dialog, table, row, column, [&](Dialog&, Cell& cell) {
    cell.label = label;
    return ProNoError;
  });
}

ProError ProUITableColumnLabelSet(const std::string& dialog, const std::string& table, const std::string& column,
                                  const std::wstring& label) {
  return changeColumn("ProUITableColumnLabelSet", dialog, table, column, [&](headless::Column& c) { c.label = label; });
}

ProError ProUITableColumnWidthSet(const std::string& dialog, const std::string& table, const std::string& column,
                                  int width) {
  return changeColumn("ProUITableColumnWidthSet", dialog, table, column,
                      [&](headless::Column& c) { c.width = std::max(width, 0); });
}

ProError ProUITableLabelRemove(const std::string& dialog, const std::string& table, const std::string& label) {
  return changeTable("ProUITableLabelRemove", dialog, table,
                     [&](Dialog& owner, headless::Table&) { return owner.remove(label, Kind::label); });
}

ProError ProUITableCheckbuttonRemove(const std::string& dialog, const std::string& table, const std::string& button) {
  return changeTable("ProUITableCheckbuttonRemove", dialog, table,
                     [&](Dialog& owner, headless::Table&) { return owner.remove(button, Kind::checkbutton); });
}

Got<std::vector<std::string>> ProUITableSelectednamesGet(const std::string& dialog, const std::string& table) {
  return ask<std::vector<std::string>>("ProUITableSelectednamesGet", dialog, table, Kind::table,
                                       [](const Component& c) { return c.table().selected(); });
}

}  // namespace creo
