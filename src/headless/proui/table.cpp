#include "headless/proui/table.h"

#include <algorithm>
#include <unordered_set>

namespace headless {

bool Table::has(const std::vector<std::string>& names) const {
  return std::all_of(names.begin(), names.end(), [this](const std::string& name) { return places_.contains(name); });
}

std::vector<std::string> Table::rows() const {
  std::vector<std::string> names;
  names.reserve(rows_.size());
  for (const Row& row : rows_) names.push_back(row.name);
  return names;
}

creo::ProError Table::insert(const std::string& after, const std::vector<std::string>& names) {
  auto place = rows_.begin();
  if (!after.empty()) {
    const auto found = places_.find(after);
    if (found == places_.end()) return creo::ProNotFound;
    place = std::next(found->second);
  }
  std::unordered_set<std::string_view> fresh;
  for (const std::string& name : names) {
    if (name.empty()) return creo::ProBadInputs;
    if (places_.contains(name) || !fresh.insert(name).second) return creo::ProExists;
  }
  for (const std::string& name : names) {
    const Place made = rows_.insert(place, Row{name, false, std::vector<Cell>(columns_.size())});
    places_.emplace(made->name, made);
  }
  return creo::ProNoError;
}

creo::ProError Table::remove(const std::vector<std::string>& names, creo::FunctionRef<void(NamedComponent*)> freed) {
  if (!has(names)) return creo::ProNotFound;
  for (const std::string& name : names) {
    const auto found = places_.find(name);
    if (found == places_.end()) continue;  // named twice
    const Place row = found->second;
    for (Cell& cell : row->cells) {
      if (cell.component) freed(cell.component);
    }
    places_.erase(found);
    rows_.erase(row);
  }
  return creo::ProNoError;
}

Cell* Table::cell(std::string_view row, std::string_view column) {
  const auto place = places_.find(row);
  const auto at = std::find_if(columns_.begin(), columns_.end(), [&](const Column& c) { return c.name == column; });
  if (place == places_.end() || at == columns_.end()) return nullptr;
  return &place->second->cells[static_cast<std::size_t>(at - columns_.begin())];
}

Column* Table::column(std::string_view name) {
  const auto at = std::find_if(columns_.begin(), columns_.end(), [&](const Column& c) { return c.name == name; });
  return at == columns_.end() ? nullptr : &*at;
}

creo::ProError Table::select(const std::vector<std::string>& names) {
  if (!has(names)) return creo::ProNotFound;
  for (Row& row : rows_) row.selected = false;
  for (const std::string& name : names) places_.at(name)->selected = true;
  return creo::ProNoError;
}

std::vector<std::string> Table::selected() const {
  std::vector<std::string> names;
  for (const Row& row : rows_) {
    if (row.selected) names.push_back(row.name);
  }
  return names;
}

}  // namespace headless
