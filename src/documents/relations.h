// Sets of relations by the item that owns them.
#pragma once

#include "creo/ProRelset.h"

namespace documents {

// The relations of a model or a feature; of a model with the id kPostRegeneration those that run behind its
// regeneration. The codes of ProModelitemToRelset and ProRelsetPostregenerationInit.
inline creo::Got<creo::ProRelset> relationsOf(const creo::ProModelitem& owner) {
  const bool isPost = owner.type == creo::ProItemType::model && owner.id == creo::kPostRegeneration;
  return isPost ? creo::ProRelsetPostregenerationInit(owner.owner) : creo::ProModelitemToRelset(owner);
}

}  // namespace documents
