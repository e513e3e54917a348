// The history dialog "kvanehistory": which lists ran on a model.
#pragma once

namespace ui {

// Opens it for the first marked row of the table; nothing without one.
void openHistoryDialog();

}  // namespace ui
