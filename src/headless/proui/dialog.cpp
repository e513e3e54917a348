#include "headless/proui/dialog.h"

#include <stdexcept>

namespace headless {

void Dialog::wrong(std::string_view component, std::string_view fault) const {
  throw std::invalid_argument("dialog '" + name_ + "', component '" + std::string(component) +
                              "': " + std::string(fault));
}

const Component& Dialog::known(std::string_view component) const {
  const auto found = components_.find(component);
  if (found == components_.end()) wrong(component, "there is none of that name");
  return found->second;
}

const Component& Dialog::known(std::string_view component, Kind kind) const {
  const Component& found = known(component);
  if (found.kind != kind) {
    wrong(component, "it is a " + std::string(kindName(found.kind)) + ", not a " + std::string(kindName(kind)));
  }
  return found;
}

Kind Dialog::kind(std::string_view component) const { return known(component).kind; }
bool Dialog::shown(std::string_view component) const { return known(component).shown; }
bool Dialog::enabled(std::string_view component) const { return known(component).enabled; }
bool Dialog::mapped(std::string_view layout) const { return known(layout, Kind::layout).mapped; }
bool Dialog::checked(std::string_view checkbutton) const { return known(checkbutton, Kind::checkbutton).checked; }
const std::wstring& Dialog::text(std::string_view component) const { return known(component).text; }
const std::string& Dialog::image(std::string_view component) const { return known(component).image; }

const Choices& Dialog::knownChoices(std::string_view component) const {
  const auto* choices = std::get_if<std::unique_ptr<Choices>>(&known(component).content);
  if (!choices) wrong(component, "it has no choices");
  return **choices;
}

const std::vector<std::string>& Dialog::choices(std::string_view component) const {
  return knownChoices(component).names;
}

const std::vector<std::wstring>& Dialog::labels(std::string_view component) const {
  return knownChoices(component).labels;
}

std::vector<std::string> Dialog::selected(std::string_view component) const {
  const Component& found = known(component);
  if (found.kind == Kind::table) return found.table().selected();
  if (found.kind == Kind::tree) return found.tree().selected();
  return knownChoices(component).selected;
}

Progress Dialog::progress(std::string_view bar) const { return known(bar, Kind::progressbar).progress(); }

std::vector<std::string> Dialog::rows(std::string_view table) const { return known(table, Kind::table).table().rows(); }

const Cell& Dialog::knownCell(std::string_view table, std::string_view row, std::string_view column) const {
  const Cell* cell = known(table, Kind::table).table().cell(row, column);
  if (!cell) wrong(table, "it has no cell in row '" + std::string(row) + "', column '" + std::string(column) + "'");
  return *cell;
}

const std::wstring& Dialog::cellText(std::string_view table, std::string_view row, std::string_view column) const {
  return knownCell(table, row, column).label;
}

std::string Dialog::cellComponent(std::string_view table, std::string_view row, std::string_view column) const {
  const Cell& cell = knownCell(table, row, column);
  return cell.component ? cell.component->first : std::string();
}

const std::vector<Column>& Dialog::columns(std::string_view table) const {
  return known(table, Kind::table).table().columns();
}

std::wstring Dialog::tree(std::string_view tree) const { return known(tree, Kind::tree).tree().dump(); }

creo::Got<Component*> Dialog::find(std::string_view component, Kind kind) {
  const auto found = components_.find(component);
  if (found == components_.end()) return creo::ProNotFound;
  if (found->second.kind != kind) return creo::ProBadInputs;
  return &found->second;
}

const Component* Dialog::look(std::string_view component) const {
  const auto found = components_.find(component);
  return found == components_.end() ? nullptr : &found->second;
}

creo::ProError Dialog::add(const std::string& component, Component content) {
  if (!components_.try_emplace(component, std::move(content)).second) return creo::ProExists;
  names_.push_back(component);
  return creo::ProNoError;
}

creo::ProError Dialog::addOverlay(const std::string& component, Component content) {
  content.copied = true;
  const creo::ProError added =
      components_.try_emplace(component, std::move(content)).second ? creo::ProNoError : creo::ProExists;
  if (added == creo::ProNoError) overlays_.push_back(component);
  return added;
}

creo::ProError Dialog::copyIntoCell(Cell& cell, std::string_view from, const std::string& component) {
  if (component.empty()) return creo::ProBadInputs;
  const auto source = components_.find(from);
  if (source == components_.end()) return creo::ProNotFound;
  const Component& look = source->second;
  if (!std::holds_alternative<std::monostate>(look.content)) return creo::ProBadInputs;  // no cell shows such a one
  if (cell.component) return creo::ProExists;
  Component copy;
  copy.kind = look.kind;
  copy.shown = look.shown;
  copy.enabled = look.enabled;
  copy.checked = look.checked;
  copy.text = look.text;
  copy.image = look.image;
  copy.copied = true;
  copy.cell = &cell;
  const auto [made, fresh] = components_.try_emplace(component, std::move(copy));
  if (!fresh) return creo::ProExists;
  cell.component = &*made;
  return creo::ProNoError;
}

creo::ProError Dialog::remove(std::string_view component, Kind kind) {
  const auto found = components_.find(component);
  if (found == components_.end()) return creo::ProGeneralError;
  if (found->second.kind != kind || !found->second.copied) return creo::ProBadInputs;
  if (found->second.cell) found->second.cell->component = nullptr;
  std::erase(overlays_, component);
  components_.erase(found);
  return creo::ProNoError;
}

creo::ProError Dialog::removeFromCell(Cell& cell) {
  if (!cell.component) return creo::ProGeneralError;
  return remove(cell.component->first, cell.component->second.kind);
}

}  // namespace headless
