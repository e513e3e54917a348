// A dialog and its components: what is on the screen, without a screen. Programs and tests read it through the
// readers below; operations of creo/ go to the components themselves.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "headless/proui/component.h"
#include "headless/proui/names.h"

namespace headless {

// The dialog that stands for Creo's own window; it has the labels that lie on its drawing area.
constexpr const char* kWindowDevice = "creo_window";

class Dialog {
 public:
  explicit Dialog(std::string name) : name_(std::move(name)) {}
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  [[nodiscard]] const std::string& name() const { return name_; }
  // Names of the components that the resource made, in its order; those copied into cells aside.
  [[nodiscard]] const std::vector<std::string>& names() const { return names_; }
  // Those that lie on its drawing area.
  [[nodiscard]] const std::vector<std::string>& overlays() const { return overlays_; }
  // Where the resource has a component: inside a layout, a table, a tree or a menu, or, with "", in the dialog itself.
  // Templates have no place.
  struct Place {
    std::string component, inside;
  };
  [[nodiscard]] const std::vector<Place>& places() const { return places_; }
  void place(const std::string& component, const std::string& inside) { places_.push_back({component, inside}); }
  // Of all components, those in cells too.
  [[nodiscard]] std::size_t size() const { return components_.size(); }
  [[nodiscard]] bool has(std::string_view component) const { return components_.contains(component); }

  // What a person sees. A component that isn't there, or is of a kind without that, is a fault of the caller:
  // std::invalid_argument names dialog and component.
  [[nodiscard]] Kind kind(std::string_view component) const;
  [[nodiscard]] bool shown(std::string_view component) const;
  [[nodiscard]] bool enabled(std::string_view component) const;
  [[nodiscard]] bool mapped(std::string_view layout) const;
  [[nodiscard]] bool checked(std::string_view checkbutton) const;
  // A button's or label's text, a text area's or input panel's value.
  [[nodiscard]] const std::wstring& text(std::string_view component) const;
  [[nodiscard]] const std::string& image(std::string_view component) const;
  // Option menus and lists.
  [[nodiscard]] const std::vector<std::string>& choices(std::string_view component) const;
  [[nodiscard]] const std::vector<std::wstring>& labels(std::string_view component) const;
  // Of a menu or list what is selected, of a table the marked rows, of a tree the selected nodes.
  [[nodiscard]] std::vector<std::string> selected(std::string_view component) const;
  [[nodiscard]] Progress progress(std::string_view bar) const;
  [[nodiscard]] std::vector<std::string> rows(std::string_view table) const;
  // The text in a cell, and the name of the component there; empty without one.
  [[nodiscard]] const std::wstring& cellText(std::string_view table, std::string_view row,
                                             std::string_view column) const;
  [[nodiscard]] std::string cellComponent(std::string_view table, std::string_view row, std::string_view column) const;
  [[nodiscard]] const std::vector<Column>& columns(std::string_view table) const;
  // A line a node: two blanks a level, the label, a blank and the type in brackets.
  [[nodiscard]] std::wstring tree(std::string_view tree) const;

  // The component, ProNotFound, or ProBadInputs for one of another kind. Valid until it is removed.
  creo::Got<Component*> find(std::string_view component, Kind kind);
  // The same of any kind; null where there is none.
  [[nodiscard]] const Component* look(std::string_view component) const;
  // ProExists: there is one of that name.
  creo::ProError add(const std::string& component, Component content);
  // The same, of one that may be removed again: it lies on a drawing area.
  creo::ProError addOverlay(const std::string& component, Component content);
  // A copy of `from` (a button, label, text area) in a cell, with its look and state but without its action.
  // ProNotFound: no `from`; ProBadInputs: one that no cell shows; ProExists: the cell or the dialog has such a
  // component.
  creo::ProError copyIntoCell(Cell& cell, std::string_view from, const std::string& component);
  // Out of the dialog and out of its cell. ProBadInputs: of another kind, or not made for a cell.
  creo::ProError remove(std::string_view component, Kind kind);
  // ProNotFound: the cell has none.
  creo::ProError removeFromCell(Cell& cell);

  std::wstring title;
  std::string icon;              // image of the window
  bool visible = false;          // shown on the screen
  bool active = false;           // activated and not yet exited
  int status = 0;                // given by the last exit
  std::array<bool, 5> traits{};  // by ProUIDialogTrait
  Action closeAction;            // run by the window's cross

 private:
  const Component& known(std::string_view component) const;
  const Component& known(std::string_view component, Kind kind) const;
  const Choices& knownChoices(std::string_view component) const;
  const Cell& knownCell(std::string_view table, std::string_view row, std::string_view column) const;
  [[noreturn]] void wrong(std::string_view component, std::string_view fault) const;

  std::string name_;
  std::vector<std::string> names_, overlays_;
  std::vector<Place> places_;
  NameMap<Component> components_;
};

}  // namespace headless
