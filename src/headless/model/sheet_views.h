// The two views that every sheet has beside those of models. They aren't stored; their ids are below 0, so that no view
// of a document has one.
#pragma once

namespace headless {

// -1, -3, -5: of what lies behind the views of models, such as drawn lines.
constexpr int backgroundViewId(int sheet) { return 1 - 2 * sheet; }
// -2, -4, -6: of what lies before them, such as notes.
constexpr int overlayViewId(int sheet) { return -2 * sheet; }
// The sheet of such an id; 0 for any other one.
constexpr int sheetOfOwnView(int id) { return id < 0 ? -(id / 2) - id % 2 : 0; }

}  // namespace headless
