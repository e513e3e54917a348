// The material that a part is made of, for the actions on it.
#pragma once

#include <optional>

#include "creo/ProTypes.h"

namespace actions {

// The current material as an owner of parameters. Nothing, with a line of that level: the part has none.
std::optional<creo::ProModelitem> currentMaterial(creo::ProMdl part, int level);

}  // namespace actions
