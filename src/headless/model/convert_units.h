// Another principal system of units for a model.
#pragma once

#include <string>

#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// keepSizes: lengths, densities and what is made of them become the numbers that say the same in the new system:
// dimensions with their tolerances, in the rows of the family table too, the body, places of components, distances of
// cross sections, the absolute accuracy, table patterns, loaded tolerances, a stated density. Angles, expressions and
// what has a unit of its own stay. Without it only the system changes. ProGeneralError, with a line and nothing
// changed: a number has no place among doubles then.
creo::ProError setPrincipalSystem(const Models& models, const Model& model, const std::string& system, bool keepSizes);

}  // namespace headless
