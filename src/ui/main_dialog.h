// The main dialog: made, filled, opened and closed.
#pragma once

namespace ui {

// The start entry of the menu: opens the tool, or brings it forward.
void pressStartEntry();
// Creates the dialog and fills it. 0, or 1 when it failed.
int toolStart();
// The dialog's close and cancel action.
void toolClose();

}  // namespace ui
