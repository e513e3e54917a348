// The components of the main dialog and what each starts.
#pragma once

namespace ui {

// Connects the choosers of package, list and log level, and the list filter's check button of the filter dialog.
void connectChoosers();

}  // namespace ui
