// What a person does to the nodes of the log tree.
#pragma once

namespace ui {

// The root, and the actions of the nodes.
void prepareLogTree();
// The model that the selected node belongs to: opened, or highlighted in the current assembly.
void openNodesModel();
void highlightNodesModel();

}  // namespace ui
