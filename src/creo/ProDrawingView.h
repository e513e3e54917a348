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

// Brings the model tree, and a drawing's tree of one sheet or of all (-1), up to date on the screen. ProNotFound: no
// window shows the model tree. A drawing's tree in which nothing has changed has a code, too.
ProError ProTreetoolRefresh(ProMdl model);
ProError ProDrawingtreeRefresh(ProMdl drawing, int sheet);

}  // namespace creo
