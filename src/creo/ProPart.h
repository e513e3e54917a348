// Parts as a whole.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// States the part's density, in its system of units; an estimated one counts as stated then. The density that holds
// already, of the part or its material, changes nothing. ProBadInputs: no part, or no positive number.
ProError ProPartDensitySet(ProMdl part, double density);

}  // namespace creo
