// What the actions on whole family tables have in common.
#pragma once

#include "creo/ProFamtable.h"

namespace actions {

// States the density of the parts below a model, itself among them, so that instances don't begin with an estimated
// one. The log tells how many parts and assemblies were looked at.
void stateDensities(creo::ProMdl model);
// Regenerates, once more where Creo wants another pass. What lost its reference counts as regenerated.
bool regenerated(creo::ProMdl instance);
// The model's family table. ProNotFound: no generic.
creo::Got<creo::ProFamtable> tableOf(creo::ProMdl model);

}  // namespace actions
