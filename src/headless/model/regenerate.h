// Regeneration: features are looked at, relations run, and what they assign is given to parameters and dimensions.
#pragma once

#include "creo/ProSolid.h"
#include "headless/model/expression.h"
#include "headless/model/models.h"

namespace headless {

// An instance's follows from its verification; one that was never verified has its generic's.
creo::ProRegenerationStatus regenerationStatus(const Model& model);

// The values of a model's parameters and dimensions, as its relations see them. The model must outlive it.
RelationLookup relationNames(const Model& model);

// Components first, each model once, then the solid; the status of each is kept with its document (of an instance with
// its row). ProRegenFailed: it or one of its components fails, a line of the message area says why; ProRegenAgain: the
// post-regeneration relations changed what the relations read; ProBadInputs: no such model. instancesToo: the
// instances in memory as well; a failure of theirs is kept with their rows only.
creo::ProError regenerate(Models& models, creo::ProMdl solid, bool instancesToo);

}  // namespace headless
