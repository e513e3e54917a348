// The two sides of the main dialog that fold away: the table's and the log's.
#pragma once

namespace ui {

// Shows or hides a side, and keeps its state.
void showLogSide(bool show);
void showTableSide(bool show);

}  // namespace ui
