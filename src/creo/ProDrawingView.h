// The views that a drawing's sheets show, and the trees beside the drawing.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProView {
  ProMdl drawing;
  int id = 0;
};
// In the drawing's order; empty for none. ProBadInputs: no drawing.
Got<std::vector<ProView>> ProDrawingViewsCollect(ProMdl drawing);
// ProNotFound, here and below: the view has gone.
Got<int> ProDrawingViewIdGet(const ProView& view);
// Its sheet, from 1.
Got<int> ProDrawingViewSheetGet(const ProView& view);
// The two views that a sheet has whatever it shows: what is drawn freely belongs to the background, what is written
// over all others to the overlay. ProDrawingViewsCollect doesn't give them. ProNotFound: no such sheet.
Got<ProView> ProDrawingBackgroundViewGet(ProMdl drawing, int sheet);
Got<ProView> ProDrawingOverlayviewGet(ProMdl drawing, int sheet);

// Brings the model tree, and a drawing's tree of one sheet or of all (-1), up to date on the screen.
ProError ProTreetoolRefresh(ProMdl model);
ProError ProDrawingtreeRefresh(ProMdl drawing, int sheet);

}  // namespace creo
