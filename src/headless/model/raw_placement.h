// A component's placement as its document keeps it.
#pragma once

#include "headless/store/records_geometry.h"

namespace headless {

// The way back from placementRecord().
RawJson rawPlacement(const PlacementRecord& placement);

}  // namespace headless
