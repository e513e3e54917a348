// Models shown in the current assembly.
#pragma once

#include <string>
#include <vector>

namespace ui {

// Selects and colours every component, at any depth of the current assembly, whose model is one of these rows
// ("BRACKET.PRT"). What was selected before isn't any more.
void highlightModels(const std::vector<std::string>& rows);

// The table's marked rows, and those with their check button set.
void highlightMarkedRows();
void highlightChosenRows();

}  // namespace ui
