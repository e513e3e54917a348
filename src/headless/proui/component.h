// One component of a dialog. A table may hold 80,000 of them, so what only some kinds have lies aside.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "creo/ProUI.h"
#include "creo/ProUIDrawingarea.h"
#include "headless/proui/table.h"
#include "headless/proui/tree.h"

namespace headless {

// The order is that of the kinds' names in component.cpp.
enum class Kind : unsigned char {
  pushbutton,
  checkbutton,
  optionmenu,
  label,
  progressbar,
  textarea,
  layout,
  table,
  tree,
  list,
  menu,
  inputpanel
};
// "pushbutton" ...
std::string_view kindName(Kind kind);

using Action = std::shared_ptr<const creo::ProUIAction>;

// Option menus and lists.
struct Choices {
  std::vector<std::string> names;
  std::vector<std::wstring> labels;
  std::vector<std::string> selected;
};

struct Progress {
  int minimum = 0, maximum = 100, value = 0;
};

// How a label lies on a drawing area.
struct LabelPlace {
  int x = 0, y = 0;
  creo::ProUIAnchor anchor;
  bool resizes = false;
  std::wstring help;
};

struct TreeContent {
  explicit TreeContent(std::vector<Tree::Type> types) : tree(std::move(types)) {}
  Tree tree;
  std::array<Action, 4> actions;  // by ProUITreeEvent
  std::string touched;            // the node whose mark was touched last; empty: none yet
};

struct Component {
  Kind kind{};
  bool shown = true;
  bool enabled = true;
  bool mapped = true;    // layouts
  bool checked = false;  // check buttons
  std::wstring text;     // of a button or label; the value of a text area or input panel
  std::string image;
  Action action;  // run when it is pressed, checked, chosen or ended with Enter by a person
  // Empty, or by kind: progressbar, optionmenu and list, table, tree, label of a drawing area.
  std::variant<std::monostate, Progress, std::unique_ptr<Choices>, std::unique_ptr<Table>, std::unique_ptr<TreeContent>,
               std::unique_ptr<LabelPlace>>
      content;
  bool copied = false;   // made for a cell; only such a one can be removed
  Cell* cell = nullptr;  // the cell that holds it

  // Each is called only for a component of its kind.
  Progress& progress() { return std::get<Progress>(content); }
  [[nodiscard]] const Progress& progress() const { return std::get<Progress>(content); }
  [[nodiscard]] Choices& choices() const { return *std::get<std::unique_ptr<Choices>>(content); }
  [[nodiscard]] Table& table() const { return *std::get<std::unique_ptr<Table>>(content); }
  [[nodiscard]] TreeContent& treeContent() const { return *std::get<std::unique_ptr<TreeContent>>(content); }
  [[nodiscard]] Tree& tree() const { return treeContent().tree; }
};

}  // namespace headless
