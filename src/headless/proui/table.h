// A table of a dialog: named rows in order, named columns, cells. Inserting behind a row, finding and deleting cost the
// same whatever the table's length.
#pragma once

#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "creo/ProTypes.h"

namespace headless {

struct Component;
using NamedComponent = std::pair<const std::string, Component>;

struct Cell {
  std::wstring label;
  NamedComponent* component = nullptr;  // owned by the dialog
};

struct Column {
  std::string name;
  std::wstring label;
  int width = 0;  // characters
};

class Table {
 public:
  explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}
  // Cells are pointed at by their components.
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  [[nodiscard]] std::vector<std::string> rows() const;
  [[nodiscard]] std::size_t size() const { return rows_.size(); }
  // Behind the row `after`, at the top when it is empty. After a failure nothing was inserted.
  creo::ProError insert(const std::string& after, const std::vector<std::string>& names);
  // After ProNotFound nothing was deleted. Components of the cells stay in the dialog and belong to no cell then:
  // `freed` is told each.
  creo::ProError remove(const std::vector<std::string>& names, creo::FunctionRef<void(NamedComponent*)> freed);

  // Null where row or column isn't there. Stays valid until its row is deleted.
  Cell* cell(std::string_view row, std::string_view column);
  Column* column(std::string_view name);
  [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }

  // Marks these rows and no others; ProNotFound, and nothing changed, where one isn't there.
  creo::ProError select(const std::vector<std::string>& names);
  // The marked rows from the top.
  [[nodiscard]] std::vector<std::string> selected() const;

 private:
  struct Row {
    std::string name;
    bool selected = false;
    std::vector<Cell> cells;  // one a column
  };
  using Place = std::list<Row>::iterator;
  [[nodiscard]] bool has(const std::vector<std::string>& names) const;

  std::vector<Column> columns_;
  std::list<Row> rows_;
  std::unordered_map<std::string_view, Place> places_;  // by the name that the row holds
};

}  // namespace headless
