// What the user has selected.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProSelection {
  ProModelitem item;
  std::vector<ProMdl> componentPath;  // from the top assembly's component down; empty: not selected in an assembly
};

// ProNotFound: nothing is selected; another failure: nothing can be selected now.
Got<std::vector<ProSelection>> ProSelbufferSelectionsGet();
// It fails while a tool of Creo's forbids it.
ProError ProSelbufferClear();
// Behind what is selected already. It must be displayed and belong to the current model. ProBadInputs: its model has
// gone.
ProError ProSelbufferSelectionAdd(const ProSelection& selection);
// Draws it in one of Creo's colours, by number, until the window is repainted; what is highlighted keeps its colour. It
// may be seen only with the next repaint.
ProError ProSelectionHighlight(const ProSelection& selection, int color);
// ProNotFound: the thing has gone.
Got<ProModelitem> ProSelectionModelitemGet(const ProSelection& selection);
// ProNotFound: it wasn't selected in an assembly.
Got<std::vector<ProMdl>> ProSelectionAsmcomppathGet(const ProSelection& selection);
// The model at the end of a path. It fails where one on the way isn't in memory.
Got<ProMdl> ProAsmcomppathMdlGet(const std::vector<ProMdl>& path);

}  // namespace creo
