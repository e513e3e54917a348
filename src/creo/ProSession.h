// What stands in the session: its models, and what its windows show.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The models of a type that are in memory. ProNotFound: none.
Got<std::vector<ProMdl>> ProSessionMdlList(ProMdlType type);
// The model that a window shows. ProNotFound: it is empty; ProBadInputs: no such window.
Got<ProMdl> ProWindowMdlGet(int window);

}  // namespace creo
