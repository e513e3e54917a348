// What the user has selected.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProSelection {
  ProModelitem item;
  std::vector<ProMdl> componentPath;  // from the top assembly's component down; empty: not selected in an assembly
};

// ProNotFound: nothing is selected.
Got<std::vector<ProSelection>> ProSelbufferSelectionsGet();
ProError ProSelbufferClear();
// Behind what is selected already. ProBadInputs: its model has gone.
ProError ProSelbufferSelectionAdd(const ProSelection& selection);
// Draws it in one of Creo's colours, by number, until the window is repainted.
ProError ProSelectionHighlight(const ProSelection& selection, int color);
Got<ProModelitem> ProSelectionModelitemGet(const ProSelection& selection);
// ProNotFound: it wasn't selected in an assembly.
Got<std::vector<ProMdl>> ProSelectionAsmcomppathGet(const ProSelection& selection);
// The model at the end of a path.
Got<ProMdl> ProAsmcomppathMdlGet(const std::vector<ProMdl>& path);

}  // namespace creo
