// Windows, by number. Creo makes a model current only through its window.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// What ProWindowRepaint and ProWindowClear take for the current window; no other operation does.
constexpr int kAnyWindow = -1;

// Opens a window for a model in memory and puts it there, without making the window current; an empty one is taken
// first. A model that has a window keeps it. Raises notification 90. ProNotFound: the model isn't in memory;
// ProNoGraphics without graphics.
Got<int> ProObjectwindowCreate(const std::wstring& name, ProMdlType type);
// Creo's first window never goes, so that there is one at any time; it may be empty.
Got<int> ProWindowCurrentGet();
// Makes a window current at once, for the calls that follow; no notification. It doesn't come forward, and what
// ProMdlCurrentGet gives stays the same. ProBadInputs: no such window.
ProError ProWindowCurrentSet(int window);
// Closes the current window once control is back with Creo; notification 29 follows. Creo's first window is emptied
// only; ProNotFound: it is empty. What wasn't saved is lost. It fails while something else blocks Creo's windows.
ProError ProWindowCurrentClose();
// Takes a window away at once; its model stays in memory. Creo's first one is emptied only. Notification 29 follows.
// ProBadInputs: no such window; ProGeneralError: it is the current one, or the one that the person works in.
ProError ProWindowDelete(int window);
// Asks Creo to bring the window forward. Control must go back to Creo first: then the window is current and
// notification 26 is raised. ProNoGraphics without graphics; ProBadInputs: no such window. An adapter must see whether
// it works for a plug-in inside Creo's process.
ProError ProWindowActivate(int window);
// Draws the window again, without what was highlighted. Takes kAnyWindow.
ProError ProWindowRepaint(int window);
// Takes all graphics off the window until it is drawn again; its model stays in it. Takes kAnyWindow.
ProError ProWindowClear(int window);
// Shows all of the model in the middle of the window. ProBadInputs: no such window; ProNotFound: it shows no model.
ProError ProWindowRefit(int window);

}  // namespace creo
