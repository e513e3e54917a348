// Creo's menu bar and the commands behind it.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "creo/ProMenu.h"

namespace headless {

struct Command {
  std::string name;
  std::function<void()> action;
  std::function<int()> access;
  bool inMenu = false;  // has a button, or was offered for the user's own menus
  std::string icon;
};

// An entry of the menu bar, with its texts in the session's language.
struct MenuButton {
  std::string menu, name, command;
  std::wstring menuLabel, label, help;
};

class Menu {
 public:
  creo::ProError addMenu(const std::string& menu, const std::wstring& label);
  // ProExists: there is a command of that name, which keeps its action.
  creo::Got<creo::ProCommand> addCommand(const std::string& name, std::function<void()> action,
                                         std::function<int()> access);
  // Of `button` the menu, its own name and its texts are taken. One that is there stays as it is.
  creo::ProError addButton(const MenuButton& button, creo::ProCommand command);
  // Null: there is none.
  Command* command(creo::ProCommand command);
  Command* command(const std::string& name);
  [[nodiscard]] std::vector<std::string> names() const;
  // In the order in which they were added.
  [[nodiscard]] const std::vector<MenuButton>& buttons() const { return buttons_; }
  void clear() { *this = {}; }

 private:
  std::map<std::string, std::wstring> menus_;  // with their labels
  std::vector<MenuButton> buttons_;
  std::vector<Command> commands_;  // number - 1
  std::map<std::string, int> byName_;
};

}  // namespace headless
