// The components of the main dialog and what each starts.
#pragma once

#include <string>

namespace ui {

// Gives each component its action; close: what ends the dialog.
void prepareMainDialog(void (*close)());
// Connects the choosers of package, list and log level, and the list filter's check button of the filter dialog.
void connectChoosers();

// As a person's choice of a package or a list that the choosers show. False: the package can't be opened, or it holds
// no list.
bool takePackage(const std::string& name);
void takeList(const std::string& name);
// Sets the check button of the history, and what it switches.
void setHistoryButton(bool on);

}  // namespace ui
