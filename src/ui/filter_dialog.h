// The dialog that picks a filter file for the model table.
#pragma once

namespace ui {

// Creates it beside the main dialog, hidden, and fills its chooser. False, after its line, when that failed.
bool createFilterDialog();
// Gives chooser and check button their actions.
void connectFilterDialog();
// Shows it; its OK button and its cross hide it again.
void openFilterDialog();
// What choosing in it does: loads the chosen filter file into the table, or drops the one that is in force.
void applyChosenFilter();

}  // namespace ui
