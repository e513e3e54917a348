// The chosen action list on paper.
#pragma once

namespace ui {

// Writes the list as a page of text into the folder of the logs and opens it with the program that shows such files,
// from which a person prints it.
void printActionList();

}  // namespace ui
