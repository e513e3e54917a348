// What the user has selected.
#pragma once

#include "creo/ProAsmcomppath.h"

namespace creo {

struct ProSelection {
  ProModelitem item;
  ProAsmcomppath path;  // to the component whose thing it is; without components: not selected in an assembly
};

// ProNotFound: nothing is selected; another failure: nothing can be selected now.
Got<std::vector<ProSelection>> ProSelbufferSelectionsGet();
// It fails while a tool of Creo's forbids it.
ProError ProSelbufferClear();
// Behind what is selected already. It must be displayed and belong to the current model, itself or as a component's.
// ProGeneralError: it doesn't; ProBadInputs: its model has gone.
ProError ProSelbufferSelectionAdd(const ProSelection& selection);
// Draws it in one of Creo's colours, by number, until the window is repainted; what is highlighted keeps its colour. It
// may be seen only with the next repaint.
ProError ProSelectionHighlight(const ProSelection& selection, int color);
// ProNotFound: the thing has gone.
Got<ProModelitem> ProSelectionModelitemGet(const ProSelection& selection);
// ProNotFound, or a path without components: it wasn't selected in an assembly.
Got<ProAsmcomppath> ProSelectionAsmcomppathGet(const ProSelection& selection);

}  // namespace creo
