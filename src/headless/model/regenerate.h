// Regeneration: relations run, what they assign is given to parameters and dimensions, and features are looked at.
#pragma once

#include "creo/ProSolid.h"
#include "headless/model/expression.h"
#include "headless/model/model.h"
#include "headless/model/rebuild.h"

namespace headless {

class Bodies;  // bodies.h
class Models;  // models.h

// An instance's follows from its verification; one that was never verified has its generic's.
creo::ProRegenerationStatus regenerationStatus(const Model& model);

// The values of a model's parameters and dimensions as its body sees them: a dimension stands at its bound. The model
// must outlive it.
RelationLookup relationNames(const Model& model);

// What the relations make of the values of an instance, and the program of its features, by its own row. Nothing is
// given to the document. The result stays until the document changes.
const InstanceValues& instanceValues(const Model& instance);

// Components first, each model once, then the solid; the status of each is kept with its document (of an instance with
// its row). ProGeneralError: it or one of its components fails, or a component is missing, a line of the message area
// says why; ProRegenAgain: the post-regeneration relations changed what the relations read; ProBadInputs: no such
// model. bodies: build what was regenerated. instancesToo: the instances in memory as well; a failure of theirs is kept
// with their rows only. worked: gets the features in their order, up to one that isn't regenerated or has lost a
// parent; null where nobody asks.
creo::ProError regenerate(Models& models, Bodies& bodies, creo::ProMdl solid, bool instancesToo,
                          std::vector<RegeneratedFeature>* worked = nullptr);
// What is wrong with the model's sets of relations, the first fault of each; nothing is given to the model.
std::vector<std::wstring> relationFaults(const Model& model);
// Runs the relations, or those behind the regeneration, and gives the model what they assign. ProGeneralError, with a
// line: one of them fails, and nothing is given.
creo::ProError regenerateRelations(const Models& models, Model& model, bool post);
// The same for those of a feature, by its id, or of a sketch of it.
creo::ProError regenerateOwnRelations(const Models& models, Model& model, int feature,
                                      const std::vector<std::string>& lines);

}  // namespace headless
