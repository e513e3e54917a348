// Sets of relations: those of a model, those that run after its regeneration, those of a feature and of its sketches.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The id of a model item that stands for the relations behind the regeneration where a set of them is begun: nothing
// is told of how Creo begins one, and an adapter has to find its way.
constexpr int kPostRegeneration = -2;

struct ProRelset {
  ProModelitem owner;
  int section = -1;  // of a feature: the sketch, from 0; -1: the feature's own
};

// The relations of a model or a feature, which run before its regeneration. ProNotFound: it has none yet. ProBadInputs:
// it can have none, or those behind the regeneration are asked for.
Got<ProRelset> ProModelitemToRelset(const ProModelitem& item);
// Those of a model that run behind its regeneration. ProNotFound: it has none yet. ProBadInputs: no such model.
Got<ProRelset> ProRelsetPostregenerationInit(ProMdl model);
// An empty set of relations; of kPostRegeneration one behind the regeneration. ProExists: the item has one.
// ProBadInputs: it can have none.
Got<ProRelset> ProRelsetCreate(const ProModelitem& item);
// Line by line. ProBadInputs: the owner has gone.
Got<std::vector<std::wstring>> ProRelsetRelationsGet(const ProRelset& relations);
// Puts other lines in place of those that it has; none takes the set away, for which Creo has an operation of its own.
// Nothing is looked at before the set is regenerated.
ProError ProRelsetRelationsSet(const ProRelset& relations, const std::vector<std::wstring>& lines);
// What owns the set. ProBadInputs: it has gone.
Got<ProModelitem> ProRelsetToModelitem(const ProRelset& relations);
// Do these relations heed units? Where nothing says so, the option relations_units_sensitive does, and that is yes
// unless it says otherwise. Those that don't count with the numbers as they stand, and units in brackets change
// nothing. ProNotFound: the relations behind the regeneration aren't there.
ProError ProRelsetUnitsSensitiveSet(const ProRelset& relations, bool sensitive);
// Runs this set alone and gives the model what it assigns. ProGeneralError: a line fails, the message area says which
// and why.
ProError ProRelsetRegenerate(const ProRelset& relations);

}  // namespace creo
