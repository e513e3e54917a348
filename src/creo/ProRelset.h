// Sets of relations: those of a model, those that run after its regeneration, those of a feature and of its sketches.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Creo's id of a model item whose relations run after the regeneration.
constexpr int kPostRegeneration = -2;

struct ProRelset {
  ProModelitem owner;
  int section = -1;  // of a feature: the sketch, from 0; -1: the feature's own
};

// The relations of a model or a feature, which run before its regeneration. Those behind it have an operation of their
// own in Creo, which an adapter asks for kPostRegeneration. ProNotFound: it has none yet. ProBadInputs: it can have
// none.
Got<ProRelset> ProModelitemToRelset(const ProModelitem& item);
// An empty set of relations. ProExists: the item has one. ProBadInputs: it can have none.
Got<ProRelset> ProRelsetCreate(const ProModelitem& item);
// Line by line. ProBadInputs: the owner has gone.
Got<std::vector<std::wstring>> ProRelsetRelationsGet(const ProRelset& relations);
// The relations of a feature's sketch, from 0; Creo promises none. ProNotFound: no such sketch, or it has none yet.
Got<ProRelset> ProSectionToRelset(const ProModelitem& feature, int section);
// Puts other lines in place of those that it has; none takes the set away, for which Creo has an operation of its own.
// Nothing is looked at before the set is regenerated.
ProError ProRelsetRelationsSet(const ProRelset& relations, const std::vector<std::wstring>& lines);
// What owns the set. ProBadInputs: it has gone.
Got<ProModelitem> ProRelsetToModelitem(const ProRelset& relations);
// Are numbers with units converted? By default they are, unless the option relations_units_sensitive says otherwise; of
// any set. ProNotFound: the relations behind the regeneration aren't there.
ProError ProRelsetUnitsSensitiveSet(const ProRelset& relations, bool sensitive);
// Runs this set alone and gives the model what it assigns. ProGeneralError: a line fails, the message area says which
// and why.
ProError ProRelsetRegenerate(const ProRelset& relations);

}  // namespace creo
