// What a body measures.
#pragma once

#include "creo/ProSolid.h"

namespace headless::geometry {

// Of the solids alone: quilts have no volume, and 0 is that of a body of quilts alone.
struct Measured {
  double volume = 0, area = 0;
  creo::ProVector centre;  // of the volume
};

}  // namespace headless::geometry
