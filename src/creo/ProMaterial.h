// Materials of parts.
#pragma once

#include "creo/ProModelitem.h"

namespace creo {

struct ProMaterial {
  ProMdl owner;
  std::wstring name;
};

// The part's current material. ProNotFound: none is set; ProBadInputs: no part.
Got<ProMaterial> ProMaterialCurrentGet(ProMdl part);
// The name alone. The same codes.
Got<std::wstring> ProPartMaterialNameGet(ProMdl part);
// Names of the materials that the part holds. ProNotFound: none; ProBadInputs: no part.
Got<std::vector<std::wstring>> ProPartMaterialsGet(ProMdl part);

// The density of the current material, in the part's system of units. ProNotFound: no material, or it tells none;
// ProBadInputs: no part.
Got<double> ProPartDensityGet(ProMdl part);

}  // namespace creo
