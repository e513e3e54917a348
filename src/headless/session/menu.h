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

class Menu {
 public:
  creo::ProError addMenu(const std::string& menu);
  // A command of that name gets the new action.
  creo::ProCommand addCommand(const std::string& name, std::function<void()> action, std::function<int()> access);
  creo::ProError addButton(const std::string& menu, const std::string& button, creo::ProCommand command);
  // Null: there is none.
  Command* command(creo::ProCommand command);
  Command* command(const std::string& name);
  [[nodiscard]] std::vector<std::string> names() const;
  void clear() { *this = {}; }

 private:
  std::map<std::string, std::map<std::string, int>> menus_;  // buttons and their commands' numbers
  std::vector<Command> commands_;                            // number - 1
  std::map<std::string, int> byName_;
};

}  // namespace headless
