// The view that every sheet has beside those of models: what is drawn freely belongs to it, and what is written over
// all others. It isn't stored; its id is below 0, so that no view of a document has it.
#pragma once

namespace headless {

// -2, -4, -6 of the first three sheets.
constexpr int ownViewId(int sheet) { return -2 * sheet; }
// The sheet of such an id; 0 for any other one. Older documents also hold -1, -3, -5, a second view of their sheets.
constexpr int sheetOfOwnView(int id) { return id < 0 ? -(id / 2) - id % 2 : 0; }

}  // namespace headless
