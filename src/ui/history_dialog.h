// The dialog that shows what ran on a model.
#pragma once

namespace ui {

// Opens it for the first selected row of the model table; nothing without one. OK and its cross end it.
void openHistoryDialog();

}  // namespace ui
