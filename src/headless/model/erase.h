// Taking models out of memory.
#pragma once

#include "creo/ProMdl.h"

namespace headless {

class Models;  // models.h

// ProBadInputs: the handle has gone; ProGeneralError, with a line of the message area: another model in memory uses it.
creo::ProError eraseModel(Models& models, creo::ProMdl model);
// As eraseModel, with all that it uses; what another model in memory uses and what `stays` names is left, with what
// that uses.
creo::ProError eraseWithUsed(Models& models, creo::ProMdl model, creo::FunctionRef<bool(creo::ProMdl)> stays);
// Erases all models but those that `stays` names and what they use. A line of the message area names each whose changes
// go with it.
void eraseUnless(Models& models, creo::FunctionRef<bool(creo::ProMdl)> stays);

}  // namespace headless
