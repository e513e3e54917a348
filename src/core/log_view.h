// The log as the main dialog shows it: a tree, or a text area.
#pragma once

#include <string_view>

namespace core {

// Appends to the text area if the level passes the view's filter.
void logToTextArea(std::wstring_view text, int level);
// Builds the view anew from the log's file, which is closed; nothing during a trigger's run.
void renderLogView();
void clearLogArea();
void emptyLogTree();
// The count of the tree's nodes is forgotten.
void logForgetView();

}  // namespace core
