// What an action works on.
#pragma once

#include <string>

#include "creo/ProTypes.h"

namespace actions {

// extension: "PRT", ".PRT" in some groups; name and extension are empty without a model.
struct Subject {
  creo::ProMdl model;
  std::wstring name, extension;
};

}  // namespace actions
