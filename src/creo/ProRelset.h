// Sets of relations: those of a model, and those that run after its regeneration.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Creo's id of a model item whose relations run after the regeneration.
constexpr int kPostRegeneration = -2;

struct ProRelset {
  ProModelitem owner;
};

// The relations of a model. ProNotFound: it has none yet.
Got<ProRelset> ProModelitemToRelset(const ProModelitem& item);
// An empty set of relations. ProExists: the model has one.
Got<ProRelset> ProRelsetCreate(const ProModelitem& item);
// Line by line.
Got<std::vector<std::wstring>> ProRelsetRelationsGet(const ProRelset& relations);
// Runs this set alone and gives the model what it assigns. ProGeneralError: a line fails, the message area says which
// and why.
ProError ProRelsetRegenerate(const ProRelset& relations);

}  // namespace creo
