// Combined states: views, layer states, representations, exploded states, styles and cross sections under one name.
#pragma once

#include <variant>

#include "creo/ProLayer.h"
#include "creo/ProState.h"

namespace creo {

// A view by its name, of a solid or a drawing. ProNotFound, or ProGeneralError: none.
Got<int> ProViewIdFromNameGet(ProMdl model, const std::wstring& name);

// What a combined state refers to: at most one of each kind.
using ProCombstateReference = std::variant<ProModelitem, ProLayerstate>;
// sectionVisibility: Creo's number of how the cross section shows, 0: not at all; it counts with a cross section alone.
// exploded: the exploded state shows. What isn't referred to stays as it is when the state is shown. ProInvalidType: no
// solid, a kind that a combined state doesn't take, two of a kind, something that has gone, or an exploded state or a
// style of a model that is no assembly. ProBadInputs: no name, one that another state has, or nothing to refer to.
Got<ProModelitem> ProMdlCombStateCreate(ProMdl model, const std::wstring& name,
                                        const std::vector<ProCombstateReference>& references, int sectionVisibility,
                                        bool exploded);
// Puts the model into all that the state refers to, or, where something of it has gone, into nothing of it:
// ProNotFound, the message area says what. ProGeneralError: its model isn't the one on top of the active window.
ProError ProCombstateActivate(const ProModelitem& state);
// ProGeneralError: it is the active one; ProNotFound: it has gone.
ProError ProCombstateDelete(const ProModelitem& state);

}  // namespace creo
