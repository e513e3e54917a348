// Exploded states and component display styles of assemblies.
#pragma once

#include "creo/ProState.h"

namespace creo {

// An exploded state that moves no component yet. ProExists: another one has the name, or it has wrong characters;
// ProBadInputs: no assembly, or an empty name.
Got<ProModelitem> ProExpldstateCreate(ProMdl assembly, const std::wstring& name);
// ProNotFound, here and below: it has gone; ProBadInputs: an item of another kind.
ProError ProExpldstateActivate(const ProModelitem& state);
// Combined states don't refer to it any more.
ProError ProExpldstateDelete(const ProModelitem& state);

// ProBadInputs, or ProNotFound: the model has no style of that id.
Got<ProModelitem> ProCompdisplayInit(ProMdl assembly, int id);
// Shows once the window is refreshed. ProBadInputs, or ProNotFound: the style has gone.
ProError ProCompdisplayActivate(const ProModelitem& style);

}  // namespace creo
