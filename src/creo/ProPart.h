// Parts as a whole.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// States a density, in the part's system of units: that of the current material, else the part's own, which counts as
// stated then where it was estimated. The density that holds already changes nothing. ProBadInputs: no part, or no
// positive number. Creo refuses a read-only part.
ProError ProPartDensitySet(ProMdl part, double density);

}  // namespace creo
