// The main dialog: made, filled, opened and closed.
#pragma once

namespace ui {

// The start entry of the menu: opens the tool, or brings it forward.
void pressStartEntry();
// Creates the dialog and fills it. 0, or 1 when it failed.
int toolStart();
// The dialog's close and cancel action.
void toolClose();

// Gives each component its action.
void prepareMainDialog();
// Shows, hides or flips a side and its state.
void showLogSide(bool show);
void showTableSide(bool show);

}  // namespace ui
