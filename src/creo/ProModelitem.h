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
// characters; with characters that can't be, too, but which they are isn't told.
ProError ProModelitemNameSet(const ProModelitem& item, const std::wstring& name);
// The item of that type and id. ProNotFound: none.
Got<ProModelitem> ProModelitemInit(ProMdl model, int id, ProItemType type);
// A feature, a coordinate system, a layer, a combined state or a material of that name (case-blind). ProNotFound: none;
// ProBadInputs: an item of another kind, which isn't found by its name.
Got<ProModelitem> ProModelitemByNameInit(ProMdl model, ProItemType type, const std::wstring& name);

}  // namespace creo
