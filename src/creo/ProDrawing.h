// Drawings.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The models of a drawing, in its order; empty for one without. ProBadInputs: no drawing. A model that can't be
// retrieved is left out, with a line in the message area.
Got<std::vector<ProMdl>> ProDrawingSolidsCollect(ProMdl drawing);

}  // namespace creo
