// Items of models by their names.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// ProNotFound: the item has no name, or has gone.
Got<std::wstring> ProModelitemNameGet(const ProModelitem& item);
// An item of that name (case-blind). ProNotFound: none.
Got<ProModelitem> ProModelitemByNameInit(ProMdl model, ProItemType type, const std::wstring& name);

}  // namespace creo
