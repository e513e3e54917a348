// Items of models by their names.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// ProNotFound: the item has no name, or has gone; ProBadInputs: an item of a kind that has none.
Got<std::wstring> ProModelitemNameGet(const ProModelitem& item);
// What Creo calls a feature that has no name of its own: "HOLE_id_39", with "_" in place of blanks. ProNotFound: it has
// gone, or is no feature.
Got<std::wstring> ProModelitemDefaultnameGet(const ProModelitem& item);
// Renames a layer, a view, a state, a cross section or a feature. ProExists: another one of its kind has the name;
// ProNotFound: it has gone; ProBadInputs: an item of another kind, a component, an empty name, or one over 31
// characters or with characters that can't be.
ProError ProModelitemNameSet(const ProModelitem& item, const std::wstring& name);
// The item of that type and id. ProNotFound: none.
Got<ProModelitem> ProModelitemInit(ProMdl model, int id, ProItemType type);
// An item of that name (case-blind). Of the kinds here Creo promises features, coordinate systems, layers and combined
// states. ProNotFound: none.
Got<ProModelitem> ProModelitemByNameInit(ProMdl model, ProItemType type, const std::wstring& name);

}  // namespace creo
