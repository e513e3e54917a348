// Members of geometry that a document keeps as written, written anew.
#pragma once

#include "headless/store/records_geometry.h"

namespace headless {

// The record's `solid`; say solidChanged() to the document.
RawJson keptSolid(const SolidRecord& solid);
// A component's `placement`.
RawJson keptPlacement(const PlacementRecord& placement);

}  // namespace headless
