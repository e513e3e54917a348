// Drawings.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The models of a drawing, in its order; empty for one without. ProBadInputs: no drawing. A model that can't be
// retrieved is left out, with a line in the message area.
Got<std::vector<ProMdl>> ProDrawingSolidsCollect(ProMdl drawing);
// The drawing's current model. ProNotFound: it has none; ProBadInputs: no drawing.
Got<ProMdl> ProDrawingCurrentsolidGet(ProMdl drawing);

}  // namespace creo
