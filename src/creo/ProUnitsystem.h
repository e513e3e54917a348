// Systems of units.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// A model's system, by its name.
struct ProUnitsystem {
  ProMdl owner;
  std::wstring name;
};
enum class ProUnitType : int { length = 0, mass = 1, time = 2, temperature = 3 };

// Is it one that Creo brings? False for a site's own.
Got<bool> ProUnitsystemIsStandard(const ProUnitsystem& system);
// The name of its unit: "mm". ProNotFound: the model has no such system.
Got<std::wstring> ProUnitsystemUnitGet(const ProUnitsystem& system, ProUnitType type);

}  // namespace creo
