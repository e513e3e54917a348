// What the log and its view in the main dialog share.
#pragma once

#include <string_view>

namespace core {

// States of the log's file; any other value is the error of the last opening.
constexpr int kLogOpen = 0;
constexpr int kLogClosed = 1;
constexpr int kLogToRender = 50;  // closed, or still open, but to be rendered

int logState();
// Closes the file, if one is open, and takes the state.
void logClose(int newState);

// Appends to the text area if the level passes the view's filter.
void logToTextArea(std::wstring_view text, int level);
// The count of the tree's nodes is forgotten.
void logForgetView();

}  // namespace core
