// Windows, by number. Creo makes a model current only through its window.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The window of no model in particular: what Creo takes where no number is known.
constexpr int kAnyWindow = -1;

// Opens an empty window for a model. ProNoGraphics without graphics.
Got<int> ProObjectwindowCreate(const std::wstring& name, ProMdlType type);
Got<int> ProWindowCurrentGet();
// Makes a window current at once, for the calls that follow; no notification. ProBadInputs: no such window.
ProError ProWindowCurrentSet(int window);
// Closes the current window; notification 29 follows once control is back with Creo.
ProError ProWindowCurrentClose();
// Asks Creo to bring the window forward. Control must go back to Creo first: then the window is current and
// notification 26 is raised. ProNoGraphics without graphics; ProBadInputs: no such window.
ProError ProWindowActivate(int window);
ProError ProWindowRepaint(int window);
ProError ProWindowClear(int window);
// Shows all of the model in the middle of the window.
ProError ProWindowRefit(int window);

}  // namespace creo
