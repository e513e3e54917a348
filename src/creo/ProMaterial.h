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

}  // namespace creo
