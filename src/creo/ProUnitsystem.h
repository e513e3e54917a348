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

// The systems that the model may have: those that Creo brings, then its own. ProBadInputs: no solid.
Got<std::vector<ProUnitsystem>> ProMdlUnitsystemsCollect(ProMdl solid);
// A system of the model's own; an empty unit is that of Creo's default, "Inch lbm Second". ProExists: there is one of
// that name; ProBadInputs: no solid, no name, or a unit that isn't known or measures something else.
struct ProUnits {
  std::wstring length, mass, time, temperature;
};
Got<ProUnitsystem> ProUnitsystemCreate(ProMdl solid, const std::wstring& name, const ProUnits& units);
// sameSize: numbers are converted, so that the model keeps its size; sameNumbers: only the units change. Parameters
// keep their numbers and units in both.
enum class ProUnitConversion { sameNumbers, sameSize };
// The model regenerates; where that fails, Creo asks a person to mend it, and ProSolidRegenerationstatusGet tells it. A
// read-only model is refused. ProNotFound: the model has no such system; ProGeneralError: a number can't be converted,
// the message area says so and nothing has changed.
ProError ProMdlPrincipalunitsystemSet(ProMdl solid, const ProUnitsystem& system, ProUnitConversion conversion);

// Is it one that Creo brings? False for a site's own.
Got<bool> ProUnitsystemIsStandard(const ProUnitsystem& system);
// The name of its unit: "mm". ProNotFound: the model has no such system.
Got<std::wstring> ProUnitsystemUnitGet(const ProUnitsystem& system, ProUnitType type);

}  // namespace creo
