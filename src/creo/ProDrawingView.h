// The views that a drawing's sheets show, and the trees beside the drawing.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProView {
  ProMdl drawing;
  int id = 0;
};
// In the drawing's order, without draft views. ProNotFound: it has none. ProBadInputs: no drawing.
Got<std::vector<ProView>> ProDrawingViewsCollect(ProMdl drawing);
// ProBadInputs: the view has gone.
Got<int> ProDrawingViewIdGet(const ProView& view);
// Its sheet, from 1. ProNotFound: the view has gone, or was erased.
Got<int> ProDrawingViewSheetGet(const ProView& view);
// The view that a sheet has whatever it shows, under either name: what is drawn freely belongs to it, and what is
// written over all others. ProDrawingViewsCollect doesn't give it. ProGeneralError: no such sheet.
Got<ProView> ProDrawingBackgroundViewGet(ProMdl drawing, int sheet);
Got<ProView> ProDrawingOverlayviewGet(ProMdl drawing, int sheet);

// Brings the model tree up to date on the screen. ProNotFound: no window shows it.
ProError ProTreetoolRefresh(ProMdl model);
constexpr int kActiveWindow = -1;
// The same for the tree of the drawing that a window shows. ProBadInputs: the window doesn't show it. A tree in which
// nothing has changed has a code, too.
ProError ProDrawingtreeRefresh(ProMdl drawing, int window);

}  // namespace creo
