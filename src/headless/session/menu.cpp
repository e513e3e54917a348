#include "headless/session/menu.h"

#include <algorithm>

namespace headless {

creo::ProError Menu::addMenu(const std::string& menu, const std::wstring& label) {
  return menus_.try_emplace(menu, label).second ? creo::ProNoError : creo::ProExists;
}

creo::Got<creo::ProCommand> Menu::addCommand(const std::string& name, std::function<void()> action,
                                             std::function<int()> access) {
  const int number = static_cast<int>(commands_.size()) + 1;
  if (!byName_.try_emplace(name, number).second) return creo::ProExists;
  Command& command = commands_.emplace_back();
  command.name = name;
  command.action = std::move(action);
  command.access = std::move(access);
  return creo::ProCommand{number};
}

creo::ProError Menu::addButton(const MenuButton& button, creo::ProCommand command) {
  const auto menu = menus_.find(button.menu);
  Command* behind = this->command(command);
  if (menu == menus_.end() || !behind) return creo::ProNotFound;
  const bool known = std::any_of(buttons_.begin(), buttons_.end(), [&](const MenuButton& entry) {
    return entry.menu == button.menu && entry.name == button.name;
  });
  if (known) return creo::ProNoError;
  behind->inMenu = true;
  buttons_.push_back(button);
  buttons_.back().menuLabel = menu->second;
  buttons_.back().command = behind->name;
  return creo::ProNoError;
}

Command* Menu::command(creo::ProCommand command) {
  if (command.id < 1 || static_cast<std::size_t>(command.id) > commands_.size()) return nullptr;
  return &commands_[static_cast<std::size_t>(command.id - 1)];
}

Command* Menu::command(const std::string& name) {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : command(creo::ProCommand{found->second});
}

std::vector<std::string> Menu::names() const {
  std::vector<std::string> out;
  for (const Command& command : commands_)
    if (command.inMenu) out.push_back(command.name);
  return out;
}

}  // namespace headless
