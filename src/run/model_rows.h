// The rows of the model table as the dialog shows them: their order, their cells, their names.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include "run/model_row.h"

namespace run {

class ModelRows {
 public:
  [[nodiscard]] bool contains(std::string_view name) const { return names_.contains(name); }
  // In the place that the bytes of its name give it. False when the dialog refuses the row.
  bool insert(const ModelRow& row);
  // Puts the label of that template into the row's check-out cell, in place of one that is there.
  void showCheckOut(const std::string& row, const char* label);
  void removeCheckOut(const std::string& row);
  // Deletes all rows of the table with the components of their cells.
  void clear();

  // A call of the dialog that failed is a line in Creo's message area, and the status until it is reset.
  bool check(creo::ProError result, std::wstring_view call);
  [[nodiscard]] creo::ProError status() const { return status_; }
  void resetStatus() { status_ = creo::ProNoError; }

 private:
  void fillCells(const ModelRow& row);
  void fillParameter(const ModelRow& row);
  void copy(const std::string& row, const char* column, const char* from, const std::string& name);

  std::set<std::string, std::less<>> names_;
  std::unordered_set<std::string> components_;  // that stand in cells
  creo::ProError status_ = creo::ProNoError;
};

}  // namespace run
