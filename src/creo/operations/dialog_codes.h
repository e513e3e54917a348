// The failures of what acts on a dialog or a component.
#pragma once

#include <vector>

#include "creo/ProTypes.h"

namespace creo {

// Creo tells a failure and mostly a bad argument, and not which of them a dialog or component that isn't there gives;
// our declarations add ProNotFound for it.
inline std::vector<ProError> componentCodes() { return {ProGeneralError, ProBadInputs, ProNotFound}; }

}  // namespace creo
