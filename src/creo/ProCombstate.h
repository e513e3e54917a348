// Combined states: views, layer states, representations, exploded states, styles and cross sections under one name.
#pragma once

#include <variant>

#include "creo/ProLayer.h"
#include "creo/ProState.h"

namespace creo {

// A view by its name. ProNotFound: none.
Got<int> ProViewIdFromNameGet(ProMdl model, const std::wstring& name);

// What a combined state refers to: at most one of each kind, of a repeated one the last.
using ProCombstateReference = std::variant<ProModelitem, ProLayerstate>;
// sectionVisibility: Creo's number of how the cross section shows, 0: not at all. exploded: the exploded state shows.
// ProInvalidType: no solid, a kind that a combined state doesn't take, or an exploded state or a style of a model that
// is no assembly. ProExists: another one has the name. ProNotFound: something has gone. ProBadInputs: no name, or
// nothing to refer to.
Got<ProModelitem> ProMdlCombStateCreate(ProMdl model, const std::wstring& name,
                                        const std::vector<ProCombstateReference>& references, int sectionVisibility,
                                        bool exploded);
// Puts the model into all that the state refers to, or, where something of it has gone, into nothing of it:
// ProNotFound, the message area says what.
ProError ProCombstateActivate(const ProModelitem& state);
// ProGeneralError: it is the active one; ProNotFound: it has gone.
ProError ProCombstateDelete(const ProModelitem& state);

}  // namespace creo
