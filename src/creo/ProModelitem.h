// Items of models by their names, and the relations that they own.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Creo's id of the relations that run after the regeneration.
constexpr int kPostRegeneration = -2;

struct ProRelset {
  ProModelitem owner;
};

// ProNotFound: the item has no name, or has gone.
Got<std::wstring> ProModelitemNameGet(const ProModelitem& item);
// What Creo calls a feature that has no name of its own: "HOLE id 39". ProNotFound: it has gone, or is no feature.
Got<std::wstring> ProModelitemDefaultnameGet(const ProModelitem& item);
// An item of that name (case-blind). ProNotFound: none.
Got<ProModelitem> ProModelitemByNameInit(ProMdl model, ProItemType type, const std::wstring& name);

// The relations of a model. ProNotFound: it has none yet.
Got<ProRelset> ProModelitemToRelset(const ProModelitem& item);
// An empty set of relations. ProExists: the model has one.
Got<ProRelset> ProRelsetCreate(const ProModelitem& item);
// Line by line.
Got<std::vector<std::wstring>> ProRelsetRelationsGet(const ProRelset& relations);

}  // namespace creo
