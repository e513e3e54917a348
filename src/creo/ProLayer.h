// Layers and layer states.
#pragma once

#include "creo/ProModelitem.h"

namespace creo {

enum class ProLayerDisplay : int { none = -1, normal = 1, display = 2, blank = 3, hidden = 5, skip = 6 };

// What saving gives where nothing differs from what was saved; -12.
constexpr ProError ProNoChange = ProNoFamtable;

struct ProLayer {
  ProMdl owner;
  int id = 0;
};
struct ProLayerstate {
  ProMdl owner;
  std::wstring name;
};

// Ends at the visitor's first answer that isn't 0, and gives that; ProNotFound: there are none. Layers may be created
// and deleted while their model's visit goes on: it walks those that were there at its start.
ProError ProMdlLayerVisit(ProMdl model, Visitor<ProLayer> visitor);
// ProNotFound: the layer has gone.
Got<std::wstring> ProLayerNameGet(const ProLayer& layer);
// The status that the layer shows, saved or not. ProNotFound: the layer has gone.
Got<ProLayerDisplay> ProLayerDisplaystatusGet(const ProLayer& layer);
// What the layer shows for the time being: saving or retrieving the model loses it, unless ProLayerDisplaystatusSave
// came before. hidden counts in assemblies alone. ProNotFound: the layer has gone; ProGeneralError: it doesn't take
// that status.
ProError ProLayerDisplaystatusSet(const ProLayer& layer, ProLayerDisplay status);
// What the layers of the model, of its submodels and of a drawing's views show becomes what is saved with them.
// ProNoChange: it is that already; ProBadInputs: the model can have no layers.
ProError ProLayerDisplaystatusSave(ProMdl model);
// A layer without items. One of its name in the model that the option default_layer_model names gives it its rules;
// that model is brought into memory and stays there. ProExists: the name is taken; ProBadInputs: no layer can be called
// so.
Got<ProLayer> ProLayerCreate(ProMdl model, const std::wstring& name);
// The layer goes, and with it its place on other layers and in layer states; what lies on it stays. ProNotFound: it has
// gone already.
ProError ProLayerDelete(const ProLayer& layer);
// The same as ProLayerItemsGet, with what comes from the layer's rules. Too many items are ProGeneralError and no list.
Got<std::vector<ProModelitem>> ProLayerItemsPopulate(const ProLayer& layer);
// What is on a layer; none is an empty list. The older form of the one above: too many items are a failure, too.
// ProNotFound, for both: the layer has gone.
Got<std::vector<ProModelitem>> ProLayerItemsGet(const ProLayer& layer);
// A thing of a model as what lies on a layer; another layer has the type ProItemType::layer. ProNotFound: the model has
// no such thing.
Got<ProModelitem> ProLayerItemInit(ProItemType type, int id, ProMdl owner);
// Puts something on a layer; what is on it already stays so. ProBadInputs: a thing of another model, or a layer that
// would come to lie on itself; ProNotFound: the layer has gone, or the one that should be put on it; ProInvalidType:
// layers take no surfaces, edges, axes, coordinate systems, representations and exploded states.
ProError ProLayerItemAdd(const ProLayer& layer, const ProModelitem& item);

// Kinds of new things that have a default layer each, on which they come to lie. An adapter knows Creo's own numbers.
constexpr int kPlaneLayer = 7, kPointLayer = 9, kCsysLayer = 10, kPointFeatureLayer = 54, kPatternLayer = 55;
// The session's, whatever the model, as the option def_layer says. ProNotFound, or an empty name: things of that kind
// have none.
Got<std::wstring> ProLayerDefLayerGet(ProMdl model, int kind);
// For the session; no model is saved with it, so whoever sets one puts the former one back. An empty name: from then on
// they have none. The layer needn't be there; until it is, nothing comes to lie on it. A layer that is renamed is no
// default any more. ProBadInputs: no layer can be called so, or there is no such kind.
ProError ProLayerDefLayerSet(ProMdl model, int kind, const std::wstring& layer);

// Solids alone have layer states. ProNotFound: the model has none.
Got<std::vector<ProLayerstate>> ProLayerstatesGet(ProMdl model);
// ProNotFound: the state has gone.
Got<std::wstring> ProLayerstateNameGet(const ProLayerstate& state);
// A layer state without layers. ProExists: the model has one of that name; ProBadInputs: no solid, or a name with
// something else than letters, digits, "_" and "-", an empty one, or one over 31 characters.
Got<ProLayerstate> ProLayerstateCreate(ProMdl model, const std::wstring& name);
// The state shows a layer of its own model so. ProExists: the layer is in it already; ProNotFound: one of the two has
// gone; ProBadInputs: the layer is of another model; ProInvalidType: no solid.
ProError ProLayerstateLayerAdd(const ProLayerstate& state, const ProLayer& layer, ProLayerDisplay status);
// Combined states that refer to it leave layers alone from then on. ProNotFound: it has gone already.
ProError ProLayerstateDelete(const ProLayerstate& state);
// Its layers show what it says, which is saved with the model; it becomes the active one. ProGeneralError: its model
// isn't the one on top of the window; ProNotFound: it has gone.
ProError ProLayerstateActivate(const ProLayerstate& state);

}  // namespace creo
