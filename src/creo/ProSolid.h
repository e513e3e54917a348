// What parts and assemblies hold.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProDimension {
  ProMdl owner;
  int id = 0;
  bool reference = false;
};

// Dimensions, or the reference dimensions, of a solid.
ProError ProSolidDimensionVisit(ProMdl solid, bool reference, Visitor<ProDimension> visitor);
// Such as "d12", or the name it was given.
Got<std::wstring> ProDimensionSymbolGet(const ProDimension& dimension);

}  // namespace creo
