// What a run asks of the screen that shows it: the dialogs stand on a floor above, and are handed down at the start.
#pragma once

#include <string>

namespace run {

struct Screen {
  // As the start entry of the menu: the tool opens, or comes forward.
  void (*open)() = [] {};
  void (*close)() = [] {};
  // As a person's choice of a package or a list that the choosers show. False: the package can't be opened, or it holds
  // no list.
  bool (*takePackage)(const std::string& name) = [](const std::string&) { return false; };
  void (*takeList)(const std::string& name) = [](const std::string&) {};
  // Sets the check button of the history, and what it switches.
  void (*setHistoryButton)(bool on) = [](bool) {};
};

// The one of this process.
Screen& screen();

}  // namespace run
